// The header that applications include: windows, controls, dialogs, data exchange and the application object.
// Sheets, pages and the file dialog are in <afxdlgs.h>.
#pragma once

#include "afxapp.h"
#include "afxcoll.h"
#include "afxctl.h"
#include "afxdd_.h"
#include "afxdialog.h"
#include "afxwnd.h"
