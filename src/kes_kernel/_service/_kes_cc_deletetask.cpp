// Deletes a task, whatever the release of its private data says.
#include <kes_kernel/_service/task_record.hpp>

#include <cstdlib>

using namespace qorkes;

namespace {

int releasePrivateData(TaskRecord* task) {
    if (!task->privateData) return KesStatusOk;
    const int status = task->privateRelease
                           ? callHook(task->privateRelease, task, task->privateData)
                           : KesStatusCcNoRelease;
    std::free(task->privateData);
    task->privateData = nullptr;
    return status;
}

} // namespace

int __kesDeleteTask(TaskRecord** task) {
    if (!task) return KesStatusNullPointer;
    if (!*task) return KesStatusOk;
    const int status = releasePrivateData(*task);
    std::free(*task);
    *task = nullptr;
    return status != KesStatusOk ? KesStatusCcDeleteFailed : KesStatusOk;
}
