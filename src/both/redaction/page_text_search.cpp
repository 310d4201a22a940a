#include "page_text_search.h"

#include "host/host_string.h"

NdxPage PageTextSearch::PdfPage(int page) const {
    HostPageView view = host_.HostDocGetPageView(doc_, page);
    return view != nullptr ? host_.HostPageViewGetPage(view) : nullptr;
}

bool PageTextSearch::HasFillableText(NdxPage pdfPage) const {
    if (pdfPage == nullptr)
        return false;
    HostFormEnv env = host_.HostDocGetInterForm(doc_);
    NdxInterForm form = env != nullptr ? host_.NDXInterFormFromEnvironment(env) : nullptr;
    if (form == nullptr)
        return false;
    const int count = host_.NDXInterFormCountPageControls(form, pdfPage);
    for (int i = 0; i < count; ++i) {
        NdxFormControl control = host_.NDXInterFormGetPageControl(form, pdfPage, i);
        if (control != nullptr && host_.NDXFormControlGetType(control) == kNdxControlTextField)
            return true;
    }
    return false;
}

bool PageTextSearch::HasAnnotationText(NdxPage pdfPage) const {
    NdxAnnotList list = pdfPage != nullptr ? host_.NDXAnnotListGet(pdfPage) : nullptr;
    if (list == nullptr)
        return false;
    const int count = host_.NDXAnnotListCount(list);
    for (int i = 0; i < count; ++i) {
        NdxAnnot annot = host_.NDXAnnotListGetAt(list, i);
        if (annot == nullptr)
            continue;
        HostBytes subtype(host_);
        host_.NDXAnnotGetSubtype(annot, subtype);
        const std::string name = subtype.Bytes();
        if (name == "FreeText" || name == "Stamp")
            return true;
    }
    return false;
}

PreparedPage PageTextSearch::Prepare(int page) {
    PreparedPage prepared;
    prepared.pdfPage = PdfPage(page);
    if (prepared.pdfPage == nullptr)
        return prepared;
    if (host_.NDXPageIsParsed(prepared.pdfPage) == 0) {
        OwnedParseOptions options(host_, host_.NDXParseOptionsNew(1, 0, 0, 0));
        host_.NDXPageParse(prepared.pdfPage, options.get());
    }
    textPage_ = OwnedTextPage(host_, host_.NDXTextPageNew(prepared.pdfPage, 0));
    if (!textPage_)
        return prepared;
    if (host_.NDXTextPageIsParsed(textPage_.get()) == 0)
        host_.NDXTextPageParse(textPage_.get());
    prepared.finder = OwnedTextFind(host_, host_.NDXTextFindNew(textPage_.get()));
    return prepared;
}

SearchRecord PageTextSearch::MatchRecord(NdxTextFind finder, int page, int32_t ordinal) const {
    SearchRecord record;
    record.page = page;
    record.start = host_.NDXTextFindGetCharIndex(finder);
    const int64_t count = host_.NDXTextFindGetCharCount(finder);
    record.end = static_cast<int32_t>(record.start + count - 1);
    record.index = ordinal;
    record.rects =
        ReadRects(host_, [&](NdxRectArray rects) { host_.NDXTextFindGetRects(finder, rects); });
    return record;
}

int PageTextSearch::FindAll(const PreparedPage& prepared, int page, const MatchQuery& query,
                            bool searchFields, std::vector<SearchRecord>& out) {
    NdxTextFind finder = prepared.finder.get();
    if (finder == nullptr ||
        host_.NDXTextFindStart(finder, query.text.c_str(), query.flags, 0) == 0)
        return 0;
    int32_t ordinal = 0;
    while (host_.NDXTextFindNext(finder) != 0) {
        SearchRecord record = MatchRecord(finder, page, ordinal);
        if (record.rects.empty())
            continue;
        record.file = query.fileId;
        record.searchKey = query.searchKey;
        out.push_back(std::move(record));
        ++ordinal;
    }
    if (searchFields)
        ordinal += FindInFields(prepared.pdfPage, page, query, ordinal, out);
    return ordinal;
}

int PageTextSearch::FindInFields(NdxPage pdfPage, int page, const MatchQuery& query,
                                 int32_t ordinal, std::vector<SearchRecord>& out) {
    OwnedFieldFind finder(host_, host_.NDXFieldTextFindNew(pdf_, pdfPage));
    if (!finder)
        return 0;
    host_.NDXFieldTextFindStart(finder.get(), query.text.c_str(), query.flags);
    int kept = 0;
    while (host_.NDXFieldTextFindNext(finder.get()) != 0) {
        SearchRecord record;
        record.page = page;
        record.file = query.fileId;
        record.searchKey = query.searchKey;
        record.start = query.fieldCharIndex;
        record.end = query.fieldCharIndex;
        record.index = ordinal + kept;
        record.rects = ReadRects(host_, [&](NdxRectArray rects) {
            host_.NDXFieldTextFindGetRects(finder.get(), rects);
        });
        if (record.rects.empty())
            continue;
        out.push_back(std::move(record));
        ++kept;
    }
    return kept;
}
