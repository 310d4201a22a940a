// A page's text lines, and the flattening of a form into its pages that makes typed values part
// of them, as the plug-in reads the text of a document with fields; the lines read as a reader
// reads them.

#include <fstream>

#include "../engine/engine_test_support.h"
#include "form_sample.h"
#include "wide_text.h"

namespace pdfhost::testing {
namespace {

using ::testing::ElementsAre;

class PageTextLinesTest : public HostFixture {
  protected:
    // The lines of a page, read into a new string array.
    static std::vector<std::wstring> Lines(NdxDoc pdf, int page) {
        const HostStringArray array = Call<HostStringArrayNew>();
        Call<NDXPageGetTextLines>(array, pdf, Call<NDXDocGetPage>(pdf, page), 10, 15);
        std::vector<std::wstring> lines;
        for (int i = 0; i < Call<HostStringArrayCount>(array); ++i)
            lines.push_back(
                ReadWide([&](HostWideString text) { Call<HostStringArrayGet>(array, i, text); }));
        Call<HostStringArrayDestroy>(array);
        return lines;
    }

    static void Flatten(NdxDoc pdf, std::initializer_list<int> pages) {
        const NdxFlattener flattener = Call<NDXFlattenerNew>(pdf);
        ASSERT_NE(flattener, nullptr);
        for (const int index : pages) {
            const NdxPage page = LoadPage(pdf, index, false);
            Call<NDXFlattenerAddPage>(flattener, page, 1, 0);
            Call<NDXPageDestroy>(page);
        }
        Call<NDXFlattenerDone>(flattener);
    }
};

TEST_F(PageTextLinesTest, LinesComeInReadingOrderAndAreAppended) {
    const std::string path = WritePdf(
        files_, "lines.pdf",
        engine::PdfDescription{.pages = {engine::PageDescription::TextLines(
                                             {"Dear Ms Roe,", "your claim 4711 is approved."}),
                                         engine::PageDescription::Blank()}});
    const HostDoc doc = app_.OpenDocument(path).document->Handle();
    const NdxDoc pdf = Call<HostDocGetPdfDoc>(doc);
    EXPECT_THAT(Lines(pdf, 0), ElementsAre(L"Dear Ms Roe,", L"your claim 4711 is approved."));
    EXPECT_TRUE(Lines(pdf, 1).empty());

    const HostStringArray array = Call<HostStringArrayNew>();
    const NdxObject first = Call<NDXDocGetPage>(pdf, 0);
    Call<NDXPageGetTextLines>(array, pdf, first, 10, 15);
    Call<NDXPageGetTextLines>(array, pdf, first, 10, 15);
    EXPECT_EQ(Call<HostStringArrayCount>(array), 4);
    // A page dictionary of another document, or no document, adds nothing.
    const HostDoc other = OpenQuietly(WritePdf(files_, "other.pdf", ThreePages()));
    Call<NDXPageGetTextLines>(array, Call<HostDocGetPdfDoc>(other), first, 10, 15);
    Call<NDXPageGetTextLines>(array, nullptr, first, 10, 15);
    EXPECT_EQ(Call<HostStringArrayCount>(array), 4);
    Call<HostStringArrayDestroy>(array);
}

TEST_F(PageTextLinesTest, AFlattenedCopyShowsTypedValuesAsPageText) {
    const std::string path = WriteFormPdf(
        files_, "claim.pdf", {{"Claim form"}, {"Page two"}},
        {{engine::FieldKind::kText, "holder", "", {{0, {72, 600, 300, 620}}}, "Jane Roe"},
         {engine::FieldKind::kText, "city", "", {{1, {72, 600, 300, 620}}}, "Oslo"}});
    const HostDoc doc = OpenQuietly(path);
    const NdxDoc pdf = Call<HostDocGetPdfDoc>(doc);
    EXPECT_THAT(Lines(pdf, 0), ElementsAre(L"Claim form"));

    Flatten(pdf, {0});
    EXPECT_THAT(Lines(pdf, 0), ElementsAre(L"Claim form", L"Jane Roe"));
    EXPECT_THAT(Lines(pdf, 1), ElementsAre(L"Page two")) << "only the pages asked for";
    EXPECT_EQ(Call<HostDocIsModified>(doc), 1);

    Flatten(pdf, {1});
    Call<NDXDocSaveToFile>(pdf, path.c_str(), 0, 1);
    EXPECT_EQ(Call<HostDocIsModified>(doc), 0) << "written over its own file";
    Call<HostDocClose>(doc, 0, 0, 0);

    // The file written over reads back with the typed value as page text.
    const HostDoc reopened = OpenQuietly(path);
    EXPECT_THAT(Lines(Call<HostDocGetPdfDoc>(reopened), 1), ElementsAre(L"Page two", L"Oslo"));
}

TEST_F(PageTextLinesTest, AFlattenerServesOnlyItsOwnDocument) {
    EXPECT_EQ(Call<NDXFlattenerNew>(nullptr), nullptr);
    const std::string path =
        WriteFormPdf(files_, "form.pdf", {{"Form"}},
                     {{engine::FieldKind::kText, "a", "", {{0, {72, 600, 300, 620}}}, "typed"}});
    const NdxDoc form = Call<HostDocGetPdfDoc>(OpenQuietly(path));
    const NdxDoc other =
        Call<HostDocGetPdfDoc>(OpenQuietly(WritePdf(files_, "plain.pdf", ThreePages())));

    const NdxFlattener flattener = Call<NDXFlattenerNew>(other);
    const NdxPage page = LoadPage(form, 0, false);
    Call<NDXFlattenerAddPage>(flattener, page, 1, 0);
    Call<NDXFlattenerDone>(flattener);
    Call<NDXPageDestroy>(page);
    EXPECT_THAT(Lines(form, 0), ElementsAre(L"Form"));
}

TEST_F(PageTextLinesTest, HyphenatedWordsKeepTheirHyphenAndAnnotationTextFollows) {
    using engine::testing_support::RawDocument;
    using engine::testing_support::RawPage;
    using engine::testing_support::RawPdf;
    using engine::testing_support::Ref;
    RawPdf raw;
    const int font = raw.Add("<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>");
    const int ap = raw.AddStream(
        "/Type /XObject /Subtype /Form /BBox [0 0 200 30] /Resources << /Font << /F1 " + Ref(font) +
            " >> >>",
        "BT /F1 10 Tf 5 10 Td (Call Ana Lind) Tj ET");
    const int note =
        raw.Add("<< /Type /Annot /Subtype /FreeText /Rect [72 500 272 530] /AP << /N " + Ref(ap) +
                " >> >>");
    const std::string bytes = RawDocument(
        raw, {{"BT /F1 12 Tf 72 720 Td (The confiden-) Tj 0 -18 Td (tiality clause) Tj ET",
               RawPage{}.resources, "[" + Ref(note) + "]"}});
    const std::string path = (files_ / "lines.pdf").string();
    std::ofstream(path, std::ios::binary) << bytes;

    const HostDoc doc = app_.OpenDocument(path).document->Handle();
    EXPECT_THAT(Lines(Call<HostDocGetPdfDoc>(doc), 0),
                ElementsAre(L"The confiden-tiality clause", L"Call Ana Lind"));
}

}  // namespace
}  // namespace pdfhost::testing
