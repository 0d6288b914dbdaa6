// Every message box of the applet, and every text of its please-wait dialog, for pictures of them.
#pragma once

#include "resources/resource.h"

#include <array>
#include <windows.h>

namespace demo {

struct Message
{
    const char* name; // of its picture
    UINT textId;
    UINT captionId;
    UINT style;           // MessageBoxA's
    const char* inserted; // takes the place of the text's placeholder; null without one
};

constexpr UINT question = MB_YESNO | MB_ICONINFORMATION;
constexpr const char* service = "Norvale Host Agents";

inline constexpr std::array messages{
    Message{"restart-question", IDS_RESTART_QUESTION, IDS_APPLET_NAME, question, nullptr},
    Message{"start-question", IDS_START_QUESTION, IDS_APPLET_NAME, question, nullptr},
    Message{"agents-pending", IDS_AGENTS_PENDING, IDS_APPLET_NAME, MB_ICONHAND, nullptr},
    Message{"agents-unknown-state", IDS_AGENTS_UNKNOWN_STATE, IDS_APPLET_NAME, MB_ICONHAND, nullptr},
    Message{"cannot-start", IDS_CANNOT_START, IDS_APPLET_NAME, MB_ICONHAND, service},
    Message{"cannot-stop", IDS_CANNOT_STOP, IDS_APPLET_NAME, MB_ICONHAND, service},
    Message{"reboot-notice", IDS_REBOOT_NOTICE, IDS_APPLET_NAME, MB_ICONHAND, nullptr},
    Message{"out-of-memory", IDS_OUT_OF_MEMORY, IDS_ERROR_CAPTION, MB_ICONHAND, nullptr},
    Message{"access-denied", IDS_ACCESS_DENIED, IDS_ERROR_CAPTION, MB_ICONHAND, nullptr},
    Message{"trap-sent", IDS_TRAP_SENT, IDS_APPLET_NAME, MB_ICONINFORMATION,
            "Management Agents Test Trap sent - Sunday, November 22, 2026 9:30:00 AM"},
    Message{"trap-not-generated", IDS_TRAP_NOT_GENERATED, IDS_ERROR_CAPTION, MB_ICONEXCLAMATION, nullptr},
    Message{"alerter-not-ready", IDS_ALERTER_NOT_READY, IDS_APPLET_NAME, MB_ICONINFORMATION, nullptr},
    Message{"clear-needs-stop", IDS_CLEAR_NEEDS_STOP, IDS_APPLET_NAME, question, nullptr},
    Message{"thresholds-cleared", IDS_THRESHOLDS_CLEARED, IDS_APPLET_NAME, MB_ICONINFORMATION, nullptr},
    Message{"thresholds-not-cleared", IDS_THRESHOLDS_NOT_CLEARED, IDS_APPLET_NAME, MB_ICONHAND, nullptr},
    Message{"role-too-long", AFX_IDP_PARSE_STRING_SIZE, IDS_APPLET_NAME, MB_ICONEXCLAMATION, "64"},
    Message{"client-enabled-note", IDS_CLIENT_ENABLED_NOTE, IDS_APPLET_NAME, MB_ICONINFORMATION, nullptr},
    Message{"script-name-invalid", IDS_SCRIPT_NAME_INVALID, IDS_APPLET_NAME, MB_ICONEXCLAMATION, nullptr},
    Message{"script-update-failed", IDS_SCRIPT_UPDATE_FAILED, IDS_ERROR_CAPTION, MB_ICONHAND, nullptr},
    Message{"client-copy-failed", IDS_CLIENT_COPY_FAILED, IDS_ERROR_CAPTION, MB_ICONHAND, nullptr},
    Message{"client-delete-failed", IDS_CLIENT_DELETE_FAILED, IDS_ERROR_CAPTION, MB_ICONHAND, nullptr},
    Message{"share-add-failed", IDS_SHARE_ADD_FAILED, IDS_ERROR_CAPTION, MB_ICONHAND, nullptr},
    Message{"share-delete-failed", IDS_SHARE_DELETE_FAILED, IDS_ERROR_CAPTION, MB_ICONHAND, nullptr},
    Message{"client-profile-failed", IDS_CLIENT_PROFILE_FAILED, IDS_ERROR_CAPTION, MB_ICONHAND, nullptr},
    Message{"board-reset-question", IDS_BOARD_RESET_QUESTION, IDS_APPLET_NAME,
            MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2, nullptr},
    Message{"board-unreachable", IDS_BOARD_UNREACHABLE, IDS_ERROR_CAPTION, MB_ICONEXCLAMATION, nullptr},
};

// Shown in the please-wait dialog, whose caption is its own.
inline constexpr std::array pleaseWaitTexts{
    Message{"starting", IDS_STARTING, 0, 0, service},
    Message{"stopping", IDS_STOPPING, 0, 0, service},
    Message{"board-resetting", IDS_BOARD_RESETTING, 0, 0, nullptr},
};

} // namespace demo
