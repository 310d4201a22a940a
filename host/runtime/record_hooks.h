// Reading a hook out of a callback record that a plug-in handed over.
#pragma once

#include <cstddef>

namespace pdfhost {

// The word at `index`, or null when the record's declared size does not reach it.
template <typename Record>
void* HookAt(const Record& record, std::size_t index) {
    if (record.size < (index + 1) * sizeof(void*))
        return nullptr;
    return record.word(index);
}

}  // namespace pdfhost
