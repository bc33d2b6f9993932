// The one door to the Windows headers: API level, macros and the headers themselves.
#pragma once

#define WIN32_LEAN_AND_MEAN
#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef _WIN32_WINNT
#define _WIN32_WINNT 0x0601
#endif
// Before it, which has older sockets of its own.
#include <windows.h>
#include <winsock2.h>
// Behind it, which they need.
#include <dde.h>
#include <ddeml.h>
#include <shellapi.h>
#include <winnetwk.h>
