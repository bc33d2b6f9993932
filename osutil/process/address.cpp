#include "osutil/process/address.h"

#include <cstring>

#include "genutil/ascii.h"

namespace genutil {

bool IsAddress(const char* text) {
    const std::size_t length =
        std::strspn(text, "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789+-.");
    return IsAsciiLetter(*text) && length > 1 && text[length] == ':';
}

}  // namespace genutil
