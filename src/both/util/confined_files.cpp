#include "confined_files.h"

#include <algorithm>
#include <array>
#include <cwctype>
#include <string>
#include <system_error>

#include "util/utf.h"

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kMaxNameBytes = 255;

// Device names that open a device instead of a file on Windows, whatever follows the first dot.
bool IsDeviceName(std::wstring_view name) {
    std::wstring stem(name.substr(0, name.find(L'.')));
    while (!stem.empty() && stem.back() == L' ')
        stem.pop_back();
    std::transform(stem.begin(), stem.end(), stem.begin(),
                   [](wchar_t c) { return static_cast<wchar_t>(std::towupper(c)); });
    static constexpr std::array<std::wstring_view, 6> kPlain = {L"CON", L"PRN",    L"AUX",
                                                                L"NUL", L"CONIN$", L"CONOUT$"};
    if (std::find(kPlain.begin(), kPlain.end(), stem) != kPlain.end())
        return true;
    const bool numbered =
        stem.size() == 4 && (stem.starts_with(L"COM") || stem.starts_with(L"LPT"));
    return numbered && stem[3] >= L'0' && stem[3] <= L'9';
}

fs::path Resolved(const fs::path& path) {
    std::error_code error;
    fs::path resolved = fs::weakly_canonical(fs::absolute(path, error), error);
    return error ? fs::path() : resolved.lexically_normal();
}

}  // namespace

bool IsPlainFileName(std::wstring_view name) {
    if (name.empty() || name == L"." || name == L".." || ToUtf8(name).size() > kMaxNameBytes)
        return false;
    const bool forbidden = std::any_of(name.begin(), name.end(), [](wchar_t c) {
        return c < 0x20 || c == 0x7F || c == L'/' || c == L'\\' || c == L':';
    });
    if (forbidden || name.back() == L'.' || name.back() == L' ')
        return false;
    return !IsDeviceName(name);
}

bool IsInside(const fs::path& root, const fs::path& target) {
    // The system reads a path only up to its first NUL: such a path names another file.
    constexpr fs::path::value_type kNul{};
    if (root.native().find(kNul) != fs::path::string_type::npos ||
        target.native().find(kNul) != fs::path::string_type::npos)
        return false;
    const fs::path base = Resolved(root);
    // The target's own last component is kept as written, so that a link is judged by where it
    // stands, not by where it points.
    const fs::path parent = Resolved(target.parent_path());
    if (base.empty() || parent.empty() || !target.has_filename())
        return false;
    const fs::path name = target.filename();
    if (name == "." || name == "..")
        return false;
    const fs::path relative = (parent / name).lexically_relative(base);
    return !relative.empty() && *relative.begin() != ".." && relative != ".";
}

bool RemoveInside(const fs::path& root, const fs::path& target, bool recursive) {
    std::error_code error;
    if (!fs::exists(fs::symlink_status(target, error)))
        return true;
    if (!IsInside(root, target))
        return false;
    if (recursive)
        fs::remove_all(target, error);
    else
        fs::remove(target, error);
    return !error;
}
