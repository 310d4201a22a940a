#include <gtest/gtest.h>

#include <vector>

#include "engine/document.h"
#include "engine/error.h"
#include "engine/page_object_number.h"
#include "raw_pdf.h"

namespace pdfhost::engine {
namespace {

using testing_support::EngineTest;
using testing_support::RawPdf;
using testing_support::Ref;

constexpr int kPages = 5;

// Five pages in a tree of two levels; page N is 100 + N points wide. Page 0 links to page 2 by
// its number and to page 3 by a reference, page 1 has a go-to action naming page 4 by number.
class PageMapTest : public EngineTest {
  protected:
    Document OpenTree() {
        RawPdf pdf;
        const int root = pdf.Add("");
        const int inner = pdf.Add("");
        std::vector<int> pages;
        for (int i = 0; i < kPages; ++i) {
            const int parent = i >= 1 && i <= 3 ? inner : root;
            pages.push_back(pdf.Add("<< /Type /Page /Parent " + Ref(parent) + " /MediaBox [0 0 " +
                                    std::to_string(100 + i) + " 200] >>"));
        }
        const int linkByNumber =
            pdf.Add("<< /Type /Annot /Subtype /Link /Rect [0 0 10 10] /Dest [2 /XYZ 0 0 0] >>");
        const int linkByReference = pdf.Add(
            "<< /Type /Annot /Subtype /Link /Rect [0 0 10 10] "
            "/Dest [" +
            Ref(pages[3]) + " /Fit] >>");
        const int action = pdf.Add(
            "<< /Type /Annot /Subtype /Link /Rect [0 0 10 10] "
            "/A << /S /GoTo /D [4 /Fit] >> >>");
        pdf.Set(pages[0], "<< /Type /Page /Parent " + Ref(root) +
                              " /MediaBox [0 0 100 200] /Annots [" + Ref(linkByNumber) + " " +
                              Ref(linkByReference) + "] >>");
        pdf.Set(pages[1], "<< /Type /Page /Parent " + Ref(inner) +
                              " /MediaBox [0 0 101 200] /Annots [" + Ref(action) + "] >>");
        pdf.Set(inner, "<< /Type /Pages /Parent " + Ref(root) + " /Kids [" + Ref(pages[1]) + " " +
                           Ref(pages[2]) + " " + Ref(pages[3]) + "] /Count 3 >>");
        pdf.Set(root, "<< /Type /Pages /Kids [" + Ref(pages[0]) + " " + Ref(inner) + " " +
                          Ref(pages[4]) + "] /Count 5 >>");
        const int catalog = pdf.Add("<< /Type /Catalog /Pages " + Ref(root) + " >>");
        const std::string path = PathOf("tree.pdf");
        testing_support::WriteBytes(path, pdf.Bytes(catalog));
        return Document::Open(context_, path);
    }

    // The references held on each page's dictionary besides the one asked for here.
    static std::vector<int> References(const Document& document) {
        std::vector<int> refs;
        for (int page = 0; page < kPages; ++page) {
            const ObjPtr dict = document.PageObject(page, "test");
            refs.push_back(pdf_obj_refs(document.fz(), dict.get()));
        }
        return refs;
    }
};

TEST_F(PageMapTest, EveryPageOfANestedTreeIsFoundThroughTheMap) {
    const Document document = OpenTree();
    ASSERT_NE(document.pdf()->rev_page_map, nullptr) << "the pages are not indexed";
    for (int page = 0; page < kPages; ++page) {
        SCOPED_TRACE(page);
        EXPECT_EQ(document.PageBox(page).Width(), 100 + page);
        const ObjPtr dict = document.PageObject(page, "test");
        EXPECT_EQ(PageIndexOf(document, dict.get()), page);
        const ObjPtr reference(
            document.fz(),
            pdf_new_indirect(document.fz(), document.pdf(), PageObjectNumber(document, page), 0));
        EXPECT_EQ(PageIndexOf(document, reference.get()), page);
    }
    const ObjPtr notAPage(document.fz(), pdf_new_dict(document.fz(), document.pdf(), 1));
    EXPECT_EQ(PageIndexOf(document, notAPage.get()), -1);
    EXPECT_THROW(document.PageObject(kPages, "test"), Error);
    EXPECT_THROW(document.LoadPage(-1, "test"), Error);
}

// Whatever MuPDF keeps on a lookup through its map is given back: neither lookups nor loads,
// of pages with links to other pages or of a page that is already open, leave a reference on
// any page's dictionary.
TEST_F(PageMapTest, LookupsAndLoadsLeaveNoReferenceBehind) {
    const Document document = OpenTree();
    const std::vector<int> before = References(document);
    for (int round = 0; round < 3; ++round) {
        for (int page = 0; page < kPages; ++page) {
            const ObjPtr dict = document.PageObject(page, "test");
            const PagePtr loaded = document.LoadPage(page, "test");
            EXPECT_EQ(pdf_resolve_indirect(document.fz(), loaded.get()->obj),
                      pdf_resolve_indirect(document.fz(), dict.get()));
            const PagePtr again = document.LoadPage(page, "test");
            EXPECT_EQ(again.get(), loaded.get());
        }
    }
    EXPECT_EQ(References(document), before);
}

}  // namespace
}  // namespace pdfhost::engine
