#include "values/BigEndian.h"

namespace Backend {

std::string bigEndian(std::uint32_t number, int size) {
    std::string bytes;
    while (size-- > 0) {
        bytes.push_back(static_cast<char>(number >> (8 * size) & 0xFF));
    }
    return bytes;
}

} // namespace Backend
