#pragma once

// What the program uses of Darwin's routing messages. The family's number differs from this
// system's.

#include <sys/socket.h>

#undef PF_ROUTE
#define PF_ROUTE 17
#define NET_RT_IFLIST2 6
#define RTM_IFINFO2 0x12
