// Copies a task, so that editing or deleting either leaves the other as it is.
#include <kes_kernel/_service/task_record.hpp>

#include <cstdlib>

using namespace qorkes;

int __kesCopyTask(TaskRecord** newTask, const TaskRecord* task) {
    if (!newTask || !task) return KesStatusNullPointer;
    if (task->status != KesStatusOk) return task->status;
    auto* copy = static_cast<TaskRecord*>(std::malloc(sizeof(TaskRecord)));
    if (!copy) return KesStatusNoMemory;
    copy->job = task->job;
    copy->callerWordA = task->callerWordA;
    copy->mode = task->mode;
    copy->editWord = task->editWord;
    copy->callerWordB = task->callerWordB;
    copy->dataType = task->dataType;
    copy->internalType = task->internalType;
    copy->rank = task->rank;
    convgate_copy(copy->startStore, &copy->start, task->start, task->rank);
    convgate_copy(copy->decimationStore, &copy->decimation, task->decimation,
                  task->rank);
    convgate_copy(copy->xshapeStore, &copy->xshape, task->xshape, task->rank);
    convgate_copy(copy->yshapeStore, &copy->yshape, task->yshape, task->rank);
    convgate_copy(copy->zshapeStore, &copy->zshape, task->zshape, task->rank);
    convgate_copy(copy->xstrideStore, &copy->xstride, task->xstride, task->rank);
    copy->x = task->x;
    copy->privateRelease = task->privateRelease;
    copy->privateClone = task->privateClone;
    copy->committed = task->committed;
    copy->privateData = task->privateData;
    if (copy->privateData &&
        (!copy->privateClone || callHook(copy->privateClone, copy, &copy->privateData,
                                         task->privateData) != 0)) {
        std::free(copy);
        return KesStatusCcCopyFailed;
    }
    __kesccSetStatus(copy, KesStatusOk);
    *newTask = copy;
    return KesStatusOk;
}
