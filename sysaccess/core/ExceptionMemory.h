// Exceptions when there is no memory.
#pragma once

// A thread's first exception takes memory of its own, without which the C++ library ends the process. Throws
// and catches one, so that the calling thread has it: to be called first, while there is memory. Linked into
// what is installed alone.
void PrepareExceptions();
