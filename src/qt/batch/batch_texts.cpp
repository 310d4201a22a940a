#include "batch_texts.h"

#include "keyed_texts.h"

QString BatchText(std::string_view key) {
    return TextOfKey(BatchTexts(), key);
}
