// Applying Redact annotations. Flag bit 1 fills each applied area with the annotation's
// interior colour (black without one). The batch variant is the apply-all of a document
// without a view; its options carry no bits of their own. Success is non-zero; on failure the
// document is as it was. The apply marks the document modified.
#include "annotation_editor.h"
#include "tables/host_tables.h"
#include "tables/table_support.h"

namespace pdfhost {
namespace {

using namespace tables;
using hostops::Op;

constexpr int kFillAreas = 0x1;

int RedactApplyAll(HostDoc doc, int flags) {
    return Guarded(0, [&](HostApp& app) {
        HostDocument* document = FindDocument(app, doc);
        if (document == nullptr)
            return 0;
        return AnnotationEditor(app).ApplyRedactions(*document, nullptr, (flags & kFillAreas) != 0)
                   ? 1
                   : 0;
    });
}

// The array holds annotation handles; each must be a live Redact annotation of the document.
int RedactApplyList(HostDoc doc, HostPtrArray annots, int flags) {
    return Guarded(0, [&](HostApp& app) {
        HostDocument* document = FindDocument(app, doc);
        const PtrArrayValue* array = app.Values().ptrArrays.Find(annots);
        if (document == nullptr || array == nullptr)
            return 0;
        std::vector<HostAnnot> list;
        for (void* item : array->items)
            list.push_back(static_cast<HostAnnot>(item));
        return AnnotationEditor(app).ApplyRedactions(*document, &list, (flags & kFillAreas) != 0)
                   ? 1
                   : 0;
    });
}

int RedactApplyBatch(HostDoc doc, int flags, uint32_t) {
    return RedactApplyAll(doc, flags);
}

}  // namespace

void RegisterRedactTables(TableManager& tables) {
    tables.Register<Op::NDXRedactApplyAll>(&RedactApplyAll);
    tables.Register<Op::NDXRedactApplyList>(&RedactApplyList);
    tables.Register<Op::NDXRedactApplyBatch>(&RedactApplyBatch);
}

}  // namespace pdfhost
