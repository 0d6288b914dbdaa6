// Exceptions when there is no memory.
#pragma once

// A thread's first exception takes memory that the C++ library does not check for: without it the library
// ends the process. After this the calling thread has it.
void PrepareExceptions();
