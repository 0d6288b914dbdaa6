// A machine that shares nothing and cannot be brought to. Tests that need shares put a script in the place of
// these functions, as they do on Windows.
#include "Import.h"

#include <lm.h>

namespace {

NET_API_STATUS Add(LPWSTR /*server*/, DWORD /*level*/, LPBYTE /*buffer*/, LPDWORD /*parameter*/)
{
    return ERROR_NOT_SUPPORTED;
}

NET_API_STATUS Delete(LPWSTR /*server*/, LPWSTR /*name*/, DWORD /*reserved*/)
{
    return NERR_Success;
}

NET_API_STATUS GetInfo(LPWSTR /*server*/, LPWSTR /*name*/, DWORD /*level*/, LPBYTE* /*buffer*/)
{
    return NERR_NetNameNotFound;
}

NET_API_STATUS FreeBuffer(LPVOID /*buffer*/)
{
    return NERR_Success;
}

const standin::Import<decltype(NetShareAdd)> addImport("NetShareAdd", Add);
const standin::Import<decltype(NetShareDel)> deleteImport("NetShareDel", Delete);
const standin::Import<decltype(NetShareGetInfo)> getInfoImport("NetShareGetInfo", GetInfo);
const standin::Import<decltype(NetApiBufferFree)> freeBufferImport("NetApiBufferFree", FreeBuffer);

} // namespace

NET_API_STATUS NetShareAdd(LPWSTR server, DWORD level, LPBYTE buffer, LPDWORD parameter)
{
    return addImport(server, level, buffer, parameter);
}

NET_API_STATUS NetShareDel(LPWSTR server, LPWSTR name, DWORD reserved)
{
    return deleteImport(server, name, reserved);
}

NET_API_STATUS NetShareGetInfo(LPWSTR server, LPWSTR name, DWORD level, LPBYTE* buffer)
{
    return getInfoImport(server, name, level, buffer);
}

NET_API_STATUS NetApiBufferFree(LPVOID buffer)
{
    return freeBufferImport(buffer);
}
