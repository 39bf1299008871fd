#include "Gk_Exception.h"

Gk_Exception::Gk_Exception(char const* token, Gk_Exception* /*parent*/) noexcept : Gk_Marker(token) {}
