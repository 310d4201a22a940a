#include "save_as_name.h"

#include "util/wide_path.h"

std::wstring SaveAsName(const std::wstring& fileName, const std::wstring& suffix) {
    std::wstring component = LastPathComponent(fileName);
    component = component.substr(0, component.find(L':'));
    const std::size_t dot = component.find_last_of(L'.');
    if (dot == std::wstring::npos || dot == 0 || component == L"..")
        return component + suffix;
    return component.substr(0, dot) + suffix + component.substr(dot);
}
