// The script that hands text arguments to the page's window.__dispatchEvent. The arguments go in
// unquoted and unseparated, from the last to the first; an event passes one, its JSON text, which
// the page thus receives as an object literal.
#pragma once

#include <string>
#include <vector>

// " window.__dispatchEvent(" + arguments, last first + ");"
std::wstring DispatchEventScript(const std::vector<std::wstring>& arguments);
