#include "keyed_texts.h"

QString TextOfKey(std::span<const KeyedText> table, std::string_view key) {
    for (const KeyedText& entry : table) {
        if (entry.key == key)
            return QString::fromUtf8(entry.text);
    }
    return QString::fromUtf8(key.data(), static_cast<qsizetype>(key.size()));
}
