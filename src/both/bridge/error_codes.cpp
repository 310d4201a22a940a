#include "error_codes.h"

namespace err {
namespace {

struct Entry {
    int32_t code;
    const char* label;
};

constexpr Entry kEntries[] = {
#define BREVAN_ERROR_ENTRY(Name, Number, Label) {Number, Label},
    BREVAN_ERROR_CODES(BREVAN_ERROR_ENTRY)
#undef BREVAN_ERROR_ENTRY
};

const Entry* Find(int32_t code) {
    for (const Entry& entry : kEntries) {
        if (entry.code == code)
            return &entry;
    }
    return nullptr;
}

}  // namespace

const char* Label(int32_t code) {
    const Entry* entry = Find(code);
    return entry != nullptr ? entry->label : "";
}

bool IsKnown(int32_t code) {
    return Find(code) != nullptr;
}

}  // namespace err
