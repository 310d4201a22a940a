#include "automation/view_state.h"

#include "doc_view.h"

namespace pdfhost {

void DescribeView(const DocView& view, Json::Value& entry) {
    entry["page"] = view.CurrentPage();
    const TextSelection& selection = view.Selection();
    if (selection.Empty()) {
        entry["selection"] = Json::nullValue;
        return;
    }
    Json::Value described(Json::objectValue);
    if (!selection.Rects().empty()) {
        described["page"] = selection.RectsPage();
        Json::Value rects(Json::arrayValue);
        for (const engine::Rect& r : selection.Rects()) {
            Json::Value rect(Json::arrayValue);
            for (const float v : {r.left, r.bottom, r.right, r.top})
                rect.append(v);
            rects.append(rect);
        }
        described["rects"] = rects;
    } else {
        Json::Value ranges(Json::arrayValue);
        for (const TextSelection::Range& r : selection.Ranges()) {
            Json::Value range(Json::objectValue);
            range["page"] = r.page;
            range["start"] = r.start;
            range["end"] = r.end;
            ranges.append(range);
        }
        described["ranges"] = ranges;
    }
    entry["selection"] = described;
}

}  // namespace pdfhost
