// Changes one parameter of a task. A failure sticks to the task.
#include <kes_kernel/_service/task_record.hpp>

using namespace qorkes;

namespace {

constexpr int lastParameter = 19;

int setParameter(TaskRecord* task, int parameter, const void* value) {
    const auto* words = static_cast<const int32_t*>(value);
    if (!words) return KesStatusNullPointer;
    if (parameter < 1 || parameter > lastParameter) return KesStatusCcBadParameter;
    switch (parameter) {
    case KesTaskParamMode:
        task->mode = *words;
        break;
    case KesTaskParamEditWord:
        task->editWord = *words;
        break;
    case KesTaskParamStart:
        convgate_copy(task->startStore, &task->start, words, task->rank);
        break;
    case KesTaskParamDecimation:
        convgate_copy(task->decimationStore, &task->decimation, words, task->rank);
        break;
    case KesTaskParamInternalType:
        task->internalType = *words;
        break;
    default:
        return KesStatusCcFixedParameter;
    }
    return KesStatusOk;
}

} // namespace

int __kesEditTask(TaskRecord* task, int parameter, const void* value) {
    if (!task) return KesStatusNullPointer;
    if (task->status != KesStatusOk) return task->status;
    const int status = setParameter(task, parameter, value);
    task->committed = 0;
    __kesccSetStatus(task, status);
    return status;
}
