#include "wide_reply.h"

#include "util/utf.h"

namespace {

constexpr std::size_t kWidenChunk = 1024;

// Widens one chunk; false when it holds a byte beyond ASCII. A fixed count over buffers that
// cannot overlap, so the compiler does it in vectors.
bool WidenAsciiChunk(const unsigned char* __restrict from, wchar_t* __restrict to) {
    unsigned char seen = 0;
    for (std::size_t i = 0; i < kWidenChunk; ++i) {
        seen |= from[i];
        to[i] = static_cast<wchar_t>(from[i]);
    }
    return seen < 0x80;
}

// Appends one piece: the ASCII run at its front is widened directly, through a small buffer that
// stays in the cache, and only what follows goes through the UTF-8 decoder. An ASCII byte never
// belongs to a longer sequence, so the split changes nothing in the result.
void AppendWidened(std::string_view utf8, std::wstring& wide) {
    const auto* bytes = reinterpret_cast<const unsigned char*>(utf8.data());
    wchar_t chunk[kWidenChunk];
    std::size_t done = 0;
    for (; done + kWidenChunk <= utf8.size() && WidenAsciiChunk(bytes + done, chunk);
         done += kWidenChunk)
        wide.append(chunk, kWidenChunk);
    for (; done < utf8.size() && bytes[done] < 0x80; ++done)
        wide.push_back(static_cast<wchar_t>(bytes[done]));
    if (done < utf8.size())
        wide += FromUtf8(utf8.substr(done));
}

}  // namespace

std::wstring WidenReply(std::initializer_list<std::string_view> pieces) {
    std::size_t size = 0;
    for (std::string_view piece : pieces)
        size += piece.size();
    std::wstring wide;
    wide.reserve(size);
    for (std::string_view piece : pieces)
        AppendWidened(piece, wide);
    return wide;
}
