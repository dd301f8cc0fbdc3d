// Addresses as text are with the sockets.
#pragma once

#include <winsock2.h>
#include <ws2tcpip.h>
