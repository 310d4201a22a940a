#include "keyed_texts.h"

QString TextOfKey(std::span<const KeyedText> table, std::string_view key) {
    const std::string_view text = KeyedTextOf(table, key);
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}
