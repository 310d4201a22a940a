// Form field trees that loop or nest without end: the document opens with the loops broken, and
// the engine's own walks (flattening, deleting widgets, field lookups) finish on it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "engine/document.h"
#include "engine/flattener.h"
#include "engine/form_fields.h"
#include "engine/form_tree_cycles.h"
#include "engine/mupdf_call.h"
#include "engine/text_page.h"
#include "engine_test_support.h"

namespace pdfhost::engine {
namespace {

using testing_support::EngineTest;

// A one-page file with a line of text and the given objects from number 10 on; its /AcroForm
// lists `fields`, its page `annots`. No cross-reference table: the engine rebuilds it.
std::string LoopPdf(const std::string& fields, const std::string& annots,
                    const std::vector<std::string>& objects) {
    const std::string content = "BT /F1 12 Tf 72 720 Td (Hello loop) Tj ET";
    std::string pdf = "%PDF-1.7\n1 0 obj <</Type/Catalog/Pages 2 0 R/AcroForm<</Fields[" + fields +
                      "]>>>> endobj\n2 0 obj <</Type/Pages/Kids[3 0 R]/Count 1>> endobj\n" +
                      "3 0 obj <</Type/Page/Parent 2 0 R/MediaBox[0 0 612 792]/Resources<</Font"
                      "<</F1 5 0 R>>>>/Contents 4 0 R/Annots[" +
                      annots + "]>> endobj\n" + "4 0 obj <</Length " +
                      std::to_string(content.size()) + ">>stream\n" + content +
                      "\nendstream endobj\n" +
                      "5 0 obj <</Type/Font/Subtype/Type1/BaseFont/Helvetica>> endobj\n";
    for (std::size_t i = 0; i < objects.size(); ++i)
        pdf += std::to_string(10 + i) + " 0 obj " + objects[i] + " endobj\n";
    return pdf + "trailer <</Root 1 0 R>>\n%%EOF\n";
}

std::string Widget(const std::string& extra) {
    return "<</Type/Annot/Subtype/Widget/FT/Tx/Rect[100 100 200 120]/P 3 0 R" + extra + ">>";
}

// A chain of `length` fields, each the only kid of the one before.
std::vector<std::string> DeepChain(int length) {
    std::vector<std::string> objects;
    for (int i = 0; i < length; ++i) {
        const std::string parent = i > 0 ? "/Parent " + std::to_string(9 + i) + " 0 R" : "";
        const std::string kids =
            i + 1 < length ? "/Kids[" + std::to_string(11 + i) + " 0 R]" : "/Rect[0 0 9 9]";
        objects.push_back("<</FT/Tx/T(f" + std::to_string(i) + ")" + parent + kids + ">>");
    }
    return objects;
}

class FormTreeCyclesTest : public EngineTest {};

TEST_F(FormTreeCyclesTest, LoopingTreesAreBrokenAndEveryWalkFinishes) {
    struct Case {
        const char* name;
        std::string pdf;
        int removedAtOpen;  // links a second pass still finds: none after the open
    };
    const Case cases[] = {
        {"field is its own kid",
         LoopPdf("10 0 R", "10 0 R 11 0 R",
                 {Widget("/T(parent)/Kids[10 0 R 11 0 R]/V(kidvalue)"),
                  Widget("/Parent 10 0 R/T(kid)")}),
         0},
        {"two fields are each other's kid",
         LoopPdf("10 0 R", "12 0 R",
                 {"<</FT/Tx/T(a)/Kids[11 0 R]/Parent 11 0 R>>",
                  "<</T(b)/Kids[10 0 R 12 0 R]/Parent 10 0 R>>", Widget("/Parent 11 0 R/T(w)")}),
         0},
        {"widget's parent chain loops outside the tree",
         LoopPdf("", "10 0 R",
                 {Widget("/Parent 11 0 R"), "<</T(x)/Parent 12 0 R>>", "<</T(y)/Parent 11 0 R>>"}),
         0},
        {"tree deeper than any form", LoopPdf("10 0 R", "", DeepChain(3000)), 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const std::string path = PathOf("loop.pdf");
        testing_support::WriteBytes(path, c.pdf);
        Document document = Document::Open(context_, path);
        EXPECT_EQ(BreakFormTreeCycles(document), c.removedAtOpen);

        InteractiveForm form(document);
        for (const ObjPtr& control : form.PageControls(0))
            form.FullName(form.FieldOf(control.get()));
        form.FindField("no such field", 0);
        FlattenPageWidgets(document, 0);
        const PageText text = PageText::OfPage(document, 0);
        EXPECT_THAT(EncodeUtf8(text.Slice(0, text.CharCount())),
                    ::testing::HasSubstr("Hello loop"));
        document.SaveFull(PathOf("saved.pdf"));
        EXPECT_EQ(Document::Open(context_, PathOf("saved.pdf")).PageCount(), 1);
    }
}

TEST_F(FormTreeCyclesTest, WellFormedFormsAreLeftAlone) {
    const std::string path = PathOf("form.pdf");
    testing_support::WriteBytes(
        path, LoopPdf("10 0 R", "11 0 R 12 0 R",
                      {"<</FT/Tx/T(name)/Kids[11 0 R 12 0 R]>>", Widget("/Parent 10 0 R"),
                       Widget("/Parent 10 0 R")}));
    Document document = Document::Open(context_, path);
    fz_context* ctx = document.fz();
    EXPECT_FALSE(
        CallMupdf(ctx, "changes", [&] { return pdf_has_unsaved_changes(ctx, document.pdf()); }));
    InteractiveForm form(document);
    EXPECT_EQ(form.PageControls(0).size(), 2u);
    EXPECT_NE(form.FindField("name", 0).get(), nullptr);
}

}  // namespace
}  // namespace pdfhost::engine
