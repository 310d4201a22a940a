#include "handle_pool.h"

namespace pdfhost {

uintptr_t NextHandleValue() {
    // Starts well above small integers so that a number passed by mistake is never a handle.
    static uintptr_t next = 0x10000;
    next += 0x10;
    return next;
}

}  // namespace pdfhost
