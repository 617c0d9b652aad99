// The sizes that the records of the system's interfaces have on the wire: a definition of the build
// that changed one would make calls fail at run time only.

#include <cstddef>

#include "platform/win32/windows.h"

// Needs <windows.h> before it.
#include <shlobj.h>

static_assert(sizeof(OSVERSIONINFOA) == 148);
static_assert(sizeof(MONITORINFO) == 40);
static_assert(sizeof(FILETIME) == 8);
// The version of the record that systems before the padded border know.
static_assert(offsetof(NONCLIENTMETRICSA, iPaddedBorderWidth) == 340);

#ifndef _WIN64
// The first version of the record ends before the item's own bitmap.
static_assert(offsetof(MENUITEMINFOA, hbmpItem) == 44);
static_assert(offsetof(MENUITEMINFOW, hbmpItem) == 44);
static_assert(sizeof(CMINVOKECOMMANDINFO) == 36);
#endif
