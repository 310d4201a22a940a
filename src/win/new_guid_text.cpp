#include <objbase.h>

#include <string>

#include "document/document_registry.h"

// The system's GUID in its own text form: upper case, in braces.
std::wstring NewGuidText() {
    GUID guid{};
    wchar_t text[40] = {};
    if (FAILED(CoCreateGuid(&guid)) || StringFromGUID2(guid, text, 40) == 0)
        return {};
    return text;
}
