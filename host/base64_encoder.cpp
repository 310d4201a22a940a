#include "base64_encoder.h"

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

namespace pdfhost {
namespace {

constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

// Every 12-bit value as its two output characters.
struct PairTable {
    std::array<char, 2 * 4096> chars{};
    constexpr PairTable() {
        for (int value = 0; value < 4096; ++value) {
            chars[2 * value] = kAlphabet[value >> 6];
            chars[2 * value + 1] = kAlphabet[value & 0x3F];
        }
    }
};

constexpr PairTable kPairs;

void PutPair(char* out, std::uint32_t twelveBits) {
    out[0] = kPairs.chars[2 * twelveBits];
    out[1] = kPairs.chars[2 * twelveBits + 1];
}

}  // namespace

std::size_t Base64Encoder::EncodedSize(std::size_t size) const {
    const std::size_t whole = size / 3 * 4;
    const std::size_t rest = size % 3;
    if (rest == 0)
        return whole;
    return whole + (padding_ != 0 ? 4 : rest + 1);
}

void Base64Encoder::EncodeInto(const void* data, std::size_t size, std::string& out) const {
    out.resize(EncodedSize(size));
    const auto* in = static_cast<const unsigned char*>(data);
    char* to = out.data();
    std::size_t i = 0;
    // Six bytes at a time from one 8-byte load, eight characters stored at once.
    for (; i + 8 <= size; i += 6, to += 8) {
        std::uint64_t word = 0;
        std::memcpy(&word, in + i, sizeof word);
        if constexpr (std::endian::native == std::endian::little)
            word = __builtin_bswap64(word);  // the first byte is the most significant
        char chars[8];
        PutPair(chars, static_cast<std::uint32_t>(word >> 52));
        PutPair(chars + 2, static_cast<std::uint32_t>(word >> 40) & 0xFFF);
        PutPair(chars + 4, static_cast<std::uint32_t>(word >> 28) & 0xFFF);
        PutPair(chars + 6, static_cast<std::uint32_t>(word >> 16) & 0xFFF);
        std::memcpy(to, chars, sizeof chars);
    }
    for (; i + 3 <= size; i += 3, to += 4) {
        const std::uint32_t group = (std::uint32_t{in[i]} << 16) | (std::uint32_t{in[i + 1]} << 8) |
                                    std::uint32_t{in[i + 2]};
        PutPair(to, group >> 12);
        PutPair(to + 2, group & 0xFFF);
    }
    const std::size_t rest = size - i;
    if (rest == 0)
        return;
    const std::uint32_t group =
        (std::uint32_t{in[i]} << 16) | (rest == 2 ? std::uint32_t{in[i + 1]} << 8 : 0);
    PutPair(to, group >> 12);
    if (rest == 2)
        to[2] = kAlphabet[(group >> 6) & 0x3F];
    if (padding_ != 0) {
        if (rest == 1)
            to[2] = padding_;
        to[3] = padding_;
    }
}

}  // namespace pdfhost
