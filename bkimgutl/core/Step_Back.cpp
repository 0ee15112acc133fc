#include "bkimgutl/core/Step_Back.h"

#include <sys/resource.h>

// On Linux a thread has a niceness of its own.
void Step_Back()
{
    constexpr id_t This_Thread = 0;
    constexpr int Steps = 5;
    (void)setpriority(PRIO_PROCESS, This_Thread, getpriority(PRIO_PROCESS, This_Thread) + Steps);
}
