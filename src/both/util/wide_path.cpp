#include "wide_path.h"

#include <type_traits>

#include "util/utf.h"

namespace fs = std::filesystem;

#ifdef _WIN32
static_assert(std::is_same_v<fs::path::value_type, wchar_t>);

fs::path PathOfWide(std::wstring_view text) {
    return fs::path(std::wstring(text));
}

std::wstring WideOfPath(const fs::path& path) {
    return path.native();
}

fs::path PathOfUtf8(std::string_view text) {
    return fs::path(FromUtf8(text));
}

std::string Utf8OfPath(const fs::path& path) {
    return ToUtf8(path.native());
}
#else
static_assert(std::is_same_v<fs::path::value_type, char>);

fs::path PathOfWide(std::wstring_view text) {
    return fs::path(ToUtf8(text));
}

std::wstring WideOfPath(const fs::path& path) {
    return FromUtf8(path.native());
}

fs::path PathOfUtf8(std::string_view text) {
    return fs::path(std::string(text));
}

std::string Utf8OfPath(const fs::path& path) {
    return path.native();
}
#endif

std::wstring LastPathComponent(std::wstring_view path) {
    const std::size_t separator = path.find_last_of(L"/\\");
    return std::wstring(separator == std::wstring_view::npos ? path : path.substr(separator + 1));
}
