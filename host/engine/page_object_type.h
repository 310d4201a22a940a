#pragma once

namespace pdfhost::engine {

// Kind of one object of a page's content, numbered as the host's tables report it.
enum class PageObjectType : int {
    kText = 1,     // one text object (BT ... ET) that shows text
    kPath = 2,     // one painted path (a clip-only path is not an object)
    kImage = 3,    // an image XObject or an inline image
    kShading = 4,  // a shading painted with `sh`
    kForm = 5,     // a form XObject, counted once; its content is not listed
    kOther = 6,    // in the host's numbering; every painting operator the engine reads is
                   // one of the kinds above, so the engine never reports it
};

}  // namespace pdfhost::engine
