#include "save_as_name.h"

std::wstring SaveAsName(const std::wstring& fileName, const std::wstring& suffix) {
    const std::size_t slash = fileName.find_last_of(L'/');
    std::wstring component = slash == std::wstring::npos ? fileName : fileName.substr(slash + 1);
    component = component.substr(0, component.find(L':'));
    const std::size_t dot = component.find_last_of(L'.');
    if (dot == std::wstring::npos || dot == 0 || component == L"..")
        return component + suffix;
    return component.substr(0, dot) + suffix + component.substr(dot);
}
