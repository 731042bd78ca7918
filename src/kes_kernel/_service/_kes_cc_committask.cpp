// Marks a healthy task as ready. There is nothing to prepare.
#include <qorkes/kes.h>

int __kesCommitTask(TaskRecord* task) {
    if (task->status != KesStatusOk) return task->status;
    task->committed = 1;
    return KesStatusOk;
}
