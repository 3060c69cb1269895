// The headers of Windows, without the names in which they get in the way of ours.
#pragma once

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
// These stand on windows.h.
#include <commctrl.h>
#include <ole2.h>
#include <oleauto.h>

#undef CopyFile
#undef DeleteFile
#undef GetForm
#undef interface
#undef small
