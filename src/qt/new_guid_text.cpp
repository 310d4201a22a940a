#include <array>
#include <cstdint>
#include <cstdio>
#include <random>
#include <string>

#include "document/document_registry.h"
#include "util/utf.h"

// The system has no GUID service of its own here: a random version-4 GUID (RFC 4122 variant),
// formatted as the Windows layer formats its own.
std::wstring NewGuidText() {
    static thread_local std::mt19937_64 engine = [] {
        std::random_device device;
        std::seed_seq seed{device(), device(), device(), device()};
        return std::mt19937_64(seed);
    }();
    std::array<uint8_t, 16> bytes{};
    for (std::size_t i = 0; i < bytes.size(); i += 8) {
        const uint64_t value = engine();
        for (std::size_t j = 0; j < 8; ++j)
            bytes[i + j] = static_cast<uint8_t>(value >> (8 * j));
    }
    bytes[6] = static_cast<uint8_t>((bytes[6] & 0x0F) | 0x40);  // version 4
    bytes[8] = static_cast<uint8_t>((bytes[8] & 0x3F) | 0x80);  // RFC 4122 variant
    char text[40];
    std::snprintf(
        text, sizeof text, "{%02X%02X%02X%02X-%02X%02X-%02X%02X-%02X%02X-%02X%02X%02X%02X%02X%02X}",
        bytes[0], bytes[1], bytes[2], bytes[3], bytes[4], bytes[5], bytes[6], bytes[7], bytes[8],
        bytes[9], bytes[10], bytes[11], bytes[12], bytes[13], bytes[14], bytes[15]);
    return FromUtf8(text);
}
