#include "wide_text.h"

#include <QString>

namespace pdfhost {

std::string Utf8Of(const wchar_t* text) {
    return text == nullptr ? std::string() : Utf8Of(std::wstring_view(text));
}

std::string Utf8Of(std::wstring_view text) {
    return QString::fromWCharArray(text.data(), static_cast<qsizetype>(text.size())).toStdString();
}

std::wstring WideOf(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size())).toStdWString();
}

}  // namespace pdfhost
