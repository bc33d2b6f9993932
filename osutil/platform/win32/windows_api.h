// The only place that includes the Windows headers: API level, macros and the headers themselves.
#pragma once

#define WIN32_LEAN_AND_MEAN
#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef _WIN32_WINNT
#define _WIN32_WINNT 0x0601
#endif
// Before windows.h, which has older sockets of its own.
#include <windows.h>
#include <winsock2.h>
// After windows.h, which they need.
#include <dde.h>
#include <ddeml.h>
#include <shellapi.h>
#include <winnetwk.h>
