#include <libvx/Hash.h>

std::uint32_t vx_hash_string(char const * text) {
    std::uint32_t hash = 2166136261u; // FNV-1a
    for (; text != nullptr && *text != '\0'; ++text) {
        hash = (hash ^ static_cast<unsigned char>(*text)) * 16777619u;
    }
    return hash;
}
