// See the header.
#include "support/Expect.h"

namespace support {

void ReportFailure(const Location& where, const std::string& message)
{
    ADD_FAILURE_AT(where.file_name(), static_cast<int>(where.line())) << message;
}

} // namespace support
