#pragma once

#include <vector>

#include "engine/page_object_type.h"

struct fz_context;
struct pdf_obj;
struct pdf_document;

namespace pdfhost::engine {

// Lists the objects of a page's content streams in content order by running them through an
// interpreter that records painting operators. Throws Error when the content cannot be read.
std::vector<PageObjectType> ListPageObjects(fz_context* ctx, pdf_document* doc, pdf_obj* page);

}  // namespace pdfhost::engine
