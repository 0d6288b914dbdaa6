// The sheet's caption.
#pragma once

#include <afxstr.h>

// The product's name with the version of the library's own file; without a version when it has none.
[[nodiscard]] CString SheetTitle();
