#include "output_options.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr std::wstring_view kFolderEnd = L"/";
constexpr std::wstring_view kNotInFileNames = L"\\:*?\"<>|/";

}  // namespace

OutputOptionControls ControlsOf(const OutputOptions& options) {
    OutputOptionControls controls;
    controls.specific = options.specificFolder;
    controls.folder = options.folder;
    if (controls.folder.ends_with(kFolderEnd))
        controls.folder.resize(controls.folder.size() - kFolderEnd.size());
    controls.keep = options.keepName;
    controls.before = options.prefix;
    controls.after = options.suffix;
    controls.overwrite = options.overwrite;
    return controls;
}

std::string_view FailedOkCheck(const OutputOptionControls& controls) {
    if (controls.specific && controls.folder.empty())
        return "IDS_STRING_CHOSEFOLDER";
    if (!controls.specific && controls.keep && !controls.overwrite)
        return "IDS_STRING_OUTPUTTIP";
    if (!controls.keep && controls.before.empty() && controls.after.empty())
        return "IDS_STRING_FIXTIP";
    return {};
}

bool OkEnabled(const OutputOptionControls& controls) {
    return !(controls.specific && controls.folder.empty());
}

bool WouldDiffer(const OutputOptionControls& controls) {
    if (controls.specific && !controls.folder.empty())
        return true;
    return !controls.keep && (!controls.before.empty() || !controls.after.empty());
}

OutputOptions WriteBack(const OutputOptionControls& controls, const OutputOptions& previous) {
    OutputOptions options = previous;
    options.sameFolder = !controls.specific;
    options.specificFolder = controls.specific;
    options.folder = controls.specific ? controls.folder + std::wstring(kFolderEnd) : L"";
    options.keepName = controls.keep;
    options.addToName = !controls.keep;
    if (controls.keep) {
        options.prefix.clear();
    } else {
        options.prefix = controls.before;
        options.suffix = controls.after;
    }
    options.overwrite = controls.overwrite;
    return options;
}

bool IsFileNameCharacter(wchar_t c) {
    return kNotInFileNames.find(c) == std::wstring_view::npos;
}

std::wstring FileNameCharactersOf(std::wstring_view text) {
    std::wstring kept;
    std::copy_if(text.begin(), text.end(), std::back_inserter(kept), IsFileNameCharacter);
    return kept;
}
