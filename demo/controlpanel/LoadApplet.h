// Loading an applet before the one that opens it does, to hook its imports.
#pragma once

#include <string>
#include <windows.h>

// The library as Control Panel will find it: loaded with the common controls that the manifest in it asks
// for, if it has one. Null when it cannot be loaded.
inline HMODULE LoadApplet(const std::string& path)
{
    constexpr WORD manifestId = 123; // where Control Panel looks for it
    ACTCTXA wanted{};
    wanted.cbSize = sizeof wanted;
    wanted.dwFlags = ACTCTX_FLAG_RESOURCE_NAME_VALID;
    wanted.lpSource = path.c_str();
    wanted.lpResourceName = MAKEINTRESOURCEA(manifestId);
    const HANDLE context = CreateActCtxA(&wanted);
    ULONG_PTR cookie = 0;
    const bool isActive = context != INVALID_HANDLE_VALUE && ActivateActCtx(context, &cookie) != FALSE;
    const HMODULE applet = LoadLibraryA(path.c_str());
    if (isActive)
        DeactivateActCtx(0, cookie);
    return applet;
}
