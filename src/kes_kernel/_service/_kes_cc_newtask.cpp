// Makes a task: the caller's words as they are, the caller's arrays as copies.
#include <kes_kernel/_service/task_record.hpp>

#include <cstdlib>

using namespace qorkes;

int __kesNewTaskX(TaskRecord** task, int job, int callerWordA, int mode,
                  int callerWordB, int type, int rank, const int* xshape,
                  const int* yshape, const int* zshape, const void* x,
                  const int* xstride) {
    if (!task) return KesStatusNullPointer;
    auto* record = static_cast<TaskRecord*>(std::malloc(sizeof(TaskRecord)));
    if (!record) return KesStatusNoMemory;
    record->job = job;
    record->callerWordA = callerWordA;
    record->mode = mode;
    record->editWord = 0;
    record->start = nullptr;
    record->decimation = nullptr;
    record->callerWordB = callerWordB;
    record->dataType = type;
    record->internalType = type;
    record->rank = rank;
    convgate_copy(record->xshapeStore, &record->xshape, xshape, rank);
    convgate_copy(record->yshapeStore, &record->yshape, yshape, rank);
    convgate_copy(record->zshapeStore, &record->zshape, zshape, rank);
    convgate_copy(record->xstrideStore, &record->xstride, xstride, rank);
    record->x = x;
    record->committed = 0;
    record->privateData = nullptr;
    record->privateRelease = nullptr;
    record->privateClone = nullptr;
    __kesccSetStatus(record, KesStatusOk);
    *task = record;
    return KesStatusOk;
}

int __kesNewTask(TaskRecord** task, int job, int callerWordA, int mode, int callerWordB,
                 int type, int rank, const int* xshape, const int* yshape,
                 const int* zshape) {
    return __kesNewTaskX(task, job, callerWordA, mode, callerWordB, type, rank, xshape,
                         yshape, zshape, nullptr, nullptr);
}
