// See the header.
#include "support/CrashReport.h"

#include <cstdio>
#include <gtest/gtest.h>
#include <string>
#include <windows.h>

namespace support {
namespace {

std::string CurrentTest()
{
    const testing::TestInfo* const test = testing::UnitTest::GetInstance()->current_test_info();
    return test == nullptr ? "outside of any test"
                           : std::string("in ") + test->test_suite_name() + '.' + test->name();
}

// The file name of the module that holds the address, and how far behind its beginning that is.
std::string Place(const void* address)
{
    HMODULE module = nullptr;
    GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       static_cast<const char*>(address), &module);
    char path[MAX_PATH] = "no module";
    if (module != nullptr)
        GetModuleFileNameA(module, &path[0], MAX_PATH);
    const auto offset = reinterpret_cast<UINT_PTR>(address) - reinterpret_cast<UINT_PTR>(module);
    char text[MAX_PATH + 20] = "";
    std::snprintf(&text[0], sizeof text, "%s+0x%llx", &path[0], static_cast<unsigned long long>(offset));
    return &text[0];
}

// The system then ends the process with the exception's code.
LONG WINAPI Report(EXCEPTION_POINTERS* exception)
{
    const EXCEPTION_RECORD& record = *exception->ExceptionRecord;
    std::fflush(stdout);
    std::fprintf(stderr, "crashed %s: exception 0x%08lx at %s\n", CurrentTest().c_str(), record.ExceptionCode,
                 Place(record.ExceptionAddress).c_str());
    std::fflush(stderr);
    return EXCEPTION_EXECUTE_HANDLER;
}

} // namespace

void ReportCrashes()
{
    SetUnhandledExceptionFilter(&Report);
}

} // namespace support
