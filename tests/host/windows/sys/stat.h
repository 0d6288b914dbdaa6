// The system's own header, and the names that Windows' C runtime has for its permissions.
#pragma once

#include_next <sys/stat.h>

#define _S_IREAD 0x0100
#define _S_IWRITE 0x0080
