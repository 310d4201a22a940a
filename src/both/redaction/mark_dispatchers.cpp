#include "mark_dispatchers.h"

#include <cstdint>
#include <limits>
#include <vector>

#include "bridge/command_params.h"
#include "bridge/error_codes.h"
#include "document/current_document.h"
#include "document/document_registry.h"
#include "redaction/owned_handle.h"
#include "redaction/redaction_services.h"
#include "redaction/request_fields.h"
#include "redaction/search_result_store.h"

namespace {

// One character range of a selection by ranges, as the host reads it from a pointer array.
struct CharRange {
    int32_t start;
    int32_t end;
};

// The key of a page in the host's range map: the page index itself.
const void* PageKey(int32_t page) {
    return reinterpret_cast<const void*>(static_cast<intptr_t>(page));
}

}  // namespace

std::optional<NdxPoint> ScrollTargetFor(const SearchRecord& record, const NdxRect& visible) {
    float targetX = 0;
    float targetY = 0;
    bool outside = record.rects.empty();
    if (!outside) {
        const NdxRect& r = record.rects.front();
        if (visible.left > r.left) {
            targetX = r.left;
            outside = true;
        } else if (r.right > visible.right) {
            targetX = r.right - visible.right + visible.left;
            outside = true;
            if (visible.left > targetX)
                targetX = r.left;
        }
        if (r.top > visible.top || visible.bottom > r.top) {
            targetY = r.top;
            outside = true;
        } else if (r.top > visible.bottom && visible.bottom > r.bottom) {
            targetY = visible.top - (visible.bottom - r.bottom);
            outside = true;
        }
    }
    if (!outside)
        return std::nullopt;
    if (targetX > std::numeric_limits<float>::epsilon())
        return NdxPoint{targetX,
                        targetY > std::numeric_limits<float>::epsilon() ? targetY : visible.top};
    return NdxPoint{visible.left, targetY};
}

Json::Value MarkTextDispatcher::Run() {
    if (!params.parsed())
        return Fail(err::kNoJson);
    const Json::Value& root = params.value();
    const std::wstring searchKey = TextOf(Member(root, "searchKey"));
    if (searchKey.empty())
        return Fail(err::kNoSearchKey);
    const std::optional<int64_t> index = ListIndexOf(root);
    if (!index)
        return Fail(err::kNoIndex);
    const CheckedDocument checked =
        CheckCurrentDocument(services_.documents, {.fileId = true, .store = true});
    if (!checked)
        return Fail(checked.error);
    HostDoc doc = checked.doc;
    const SearchRecord record = checked.store->GetResult(checked.fileId, searchKey, *index);
    if (record.page == -1 || record.index == -1)
        return Fail(err::kNoFindResult);

    HostApi& host = services_.host;
    HostDocView view = host.HostDocGetView(doc);
    HostPageView current = view != nullptr ? host.HostDocViewGetCurrentPageView(view) : nullptr;
    HostPageView pageView =
        view != nullptr ? host.HostDocViewGetPageView(view, record.page) : nullptr;
    if (current == nullptr || pageView == nullptr)
        return Fail(err::kNoDocView);
    HostTextSelectTool tool = host.HostDocGetTextSelectTool(doc);
    if (tool == nullptr)
        return Fail(err::kNoTextSelectTool);

    Select(tool, pageView, record);
    if (pageView != current)
        host.HostDocViewGotoPage(view, record.page);
    const NdxRect visible = host.HostPageViewGetVisibleRect(pageView);
    if (const std::optional<NdxPoint> target = ScrollTargetFor(record, visible)) {
        int x = 0;
        int y = 0;
        host.HostPageViewPointToDevice(pageView, &*target, &x, &y);
        host.HostDocViewScrollTo(view, x, y);
    }
    return MakeResult(err::kOk, Json::Value());
}

// By rectangles when the record has them; otherwise by the character ranges of the record and its
// pieces, one range array per page (a later part on a page replaces the earlier one's entry).
void MarkTextDispatcher::Select(HostTextSelectTool tool, HostPageView pageView,
                                const SearchRecord& record) {
    HostApi& host = services_.host;
    if (!record.rects.empty()) {
        OwnedRectArray rects(host, host.NDXRectArrayNew());
        for (const NdxRect& r : record.rects)
            host.NDXRectArrayAdd(rects.get(), r.left, r.bottom, r.right, r.top);
        host.HostTextSelectToolSelectRects(tool, pageView, rects.get());
        return;
    }
    const std::size_t parts = record.pieces.size() + 1;
    OwnedMap map(host, host.HostMapNew(static_cast<int>(parts)));
    std::vector<CharRange> ranges;
    ranges.reserve(parts);  // the host holds pointers into it until the call returns
    std::vector<OwnedPtrArray> arrays;
    const auto add = [&](int32_t page, int32_t start, int32_t end) {
        ranges.push_back(CharRange{start, end});
        OwnedPtrArray& array = arrays.emplace_back(host, host.HostPtrArrayNew());
        host.HostPtrArrayAdd(array.get(), &ranges.back());
        host.HostMapSet(map.get(), PageKey(page), array.get());
    };
    add(record.page, record.start, record.end);
    for (const SearchPiece& piece : record.pieces)
        add(piece.page, piece.start, piece.end);
    host.HostTextSelectToolSelectRanges(tool, map.get());
}

Json::Value ClearMarkTextsDispatcher::Run() {
    const CheckedDocument checked = CheckCurrentDocument(services_.documents);
    if (!checked)
        return Fail(checked.error);
    HostDoc doc = checked.doc;
    HostTextSelectTool tool = services_.host.HostDocGetTextSelectTool(doc);
    if (tool == nullptr)
        return Fail(err::kNoTextSelectTool);
    services_.host.HostTextSelectToolClear(tool);
    return MakeResult(err::kOk, Json::Value());
}
