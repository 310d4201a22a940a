#include "page_script.h"

std::wstring DispatchEventScript(const std::vector<std::wstring>& arguments) {
    std::wstring script = L" window.__dispatchEvent(";
    for (auto it = arguments.rbegin(); it != arguments.rend(); ++it)
        script += *it;
    script += L");";
    return script;
}
