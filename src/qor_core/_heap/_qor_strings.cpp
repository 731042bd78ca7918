// The two string services of the vector subsystem.
#include <qorkes/qor.h>

#include <cstring>

int hox_qor_service_strlen1(const char* s) { return static_cast<int>(std::strlen(s)); }

int hox_qor_service_strcat1(const char* s1, const char* s2, char* dest) {
    const std::size_t first = std::strlen(s1);
    const std::size_t second = std::strlen(s2);
    std::memcpy(dest, s1, first);
    std::memcpy(dest + first, s2, second + 1);
    return static_cast<int>(first + second);
}
