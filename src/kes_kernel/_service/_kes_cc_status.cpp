// The sticky status of a task.
#include <qorkes/kes.h>

int __kesccSetStatus(TaskRecord* task, int status) {
    const int old = task->status;
    task->status = status;
    return old;
}

int __kesccGetStatus(const TaskRecord* task) { return task->status; }
