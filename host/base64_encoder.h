// Base64 with the standard alphabet and no line breaks. Uploads pass megabytes per call, so the
// encoder writes straight into the caller's string; whole groups go through OpenSSL's encoder.
#pragma once

#include <cstddef>
#include <string>

namespace pdfhost {

class Base64Encoder {
  public:
    // `padding` fills the last group of four; 0 leaves it short.
    explicit Base64Encoder(char padding) : padding_(padding) {}

    // Replaces `out` with the encoding of `size` bytes at `data`.
    void EncodeInto(const void* data, std::size_t size, std::string& out) const;
    // The length of the encoding of `size` bytes.
    std::size_t EncodedSize(std::size_t size) const;

  private:
    char padding_;
};

}  // namespace pdfhost
