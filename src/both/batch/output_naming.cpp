#include "output_naming.h"

#include <utility>

namespace {

constexpr const wchar_t* kDefaultExtension = L".pdf";

struct SourceParts {
    std::wstring folder;  // with its separator
    std::wstring fileName;
    std::wstring baseName;
    std::wstring extension;  // with its dot
};

SourceParts Split(const std::wstring& source) {
    SourceParts parts;
    const std::size_t separator = source.find_last_of(L"/\\");
    // A separator only at the very start leaves the whole path as the file name.
    if (separator == std::wstring::npos || separator == 0) {
        parts.fileName = source;
    } else {
        parts.folder = source.substr(0, separator + 1);
        parts.fileName = source.substr(separator + 1);
    }
    const std::size_t dot = parts.fileName.rfind(L'.');
    if (dot == std::wstring::npos) {
        parts.baseName = parts.fileName;
        parts.extension = kDefaultExtension;
    } else {
        parts.baseName = parts.fileName.substr(0, dot);
        parts.extension = parts.fileName.substr(dot);
    }
    return parts;
}

OutputTarget Other(std::wstring path) {
    return {OutputTarget::Kind::Other, std::move(path)};
}

}  // namespace

OutputTarget TargetOf(const std::wstring& source, const OutputOptions& options) {
    const SourceParts parts = Split(source);
    const std::wstring renamed = options.prefix + parts.baseName + options.suffix + parts.extension;
    if (options.sameFolder) {
        if (options.keepName)
            return {OutputTarget::Kind::Source, source};
        if (options.addToName)
            return Other(parts.folder + renamed);
        return {};
    }
    if (options.specificFolder) {
        if (options.keepName)
            return Other(options.folder + parts.fileName);
        if (options.addToName)
            return Other(options.folder + renamed);
    }
    return {};
}
