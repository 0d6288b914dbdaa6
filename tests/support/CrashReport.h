// What a test program that crashes leaves behind: which exception, where, and in which test. Windows' own
// message box would wait for somebody, and Wine's debugger takes minutes.
#pragma once

namespace support {

// From now on the process prints a line to standard error before an exception ends it, with the exception's
// code. Called once.
void ReportCrashes();

} // namespace support
