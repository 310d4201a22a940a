#include "base64_encoder.h"

#include <openssl/evp.h>

#include <algorithm>
#include <cstdint>

namespace pdfhost {
namespace {

constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

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
    // Whole groups of three bytes go through OpenSSL's encoder, in calls its int length can take;
    // it ends each call's text with a NUL, which the next call or the tail below overwrites, or
    // which lands on the string's own terminator.
    constexpr std::size_t kLargestCall = std::size_t{3} << 28;
    const std::size_t whole = size / 3 * 3;
    std::size_t i = 0;
    while (i < whole) {
        const std::size_t count = std::min(whole - i, kLargestCall);
        EVP_EncodeBlock(reinterpret_cast<unsigned char*>(to), in + i, static_cast<int>(count));
        i += count;
        to += count / 3 * 4;
    }
    const std::size_t rest = size - i;
    if (rest == 0)
        return;
    const std::uint32_t group =
        (std::uint32_t{in[i]} << 16) | (rest == 2 ? std::uint32_t{in[i + 1]} << 8 : 0);
    to[0] = kAlphabet[group >> 18];
    to[1] = kAlphabet[(group >> 12) & 0x3F];
    if (rest == 2)
        to[2] = kAlphabet[(group >> 6) & 0x3F];
    if (padding_ != 0) {
        if (rest == 1)
            to[2] = padding_;
        to[3] = padding_;
    }
}

}  // namespace pdfhost
