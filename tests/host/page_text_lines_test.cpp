// A page's text lines, and the flattening of a form into its pages that makes typed values part
// of them, as the plug-in reads the text of a document with fields; the lines read as a reader
// reads them.
#include <gmock/gmock.h>

#include <fstream>

#include "../engine/raw_pdf.h"
#include "form_sample.h"
#include "host_test_support.h"
#include "wide_text.h"

namespace pdfhost {
namespace {

using hostops::Op;
using testing::CallHost;
using ::testing::ElementsAre;

class PageTextLinesTest : public testing::HostFixture {
  protected:
    // The lines of a page, read into a new string array.
    static std::vector<std::wstring> Lines(NdxDoc pdf, int page) {
        const HostStringArray array = CallHost<Op::HostStringArrayNew>();
        CallHost<Op::NDXPageGetTextLines>(array, pdf, CallHost<Op::NDXDocGetPage>(pdf, page), 10,
                                          15);
        std::vector<std::wstring> lines;
        const HostWideString text = CallHost<Op::HostWideStringNew>();
        for (int i = 0; i < CallHost<Op::HostStringArrayCount>(array); ++i) {
            CallHost<Op::HostStringArrayGet>(array, i, text);
            lines.push_back(testing::WideText(text));
        }
        CallHost<Op::HostWideStringDelete>(text);
        CallHost<Op::HostStringArrayDestroy>(array);
        return lines;
    }

    HostDoc OpenHidden(const std::string& path) {
        HostOpenHiddenOptions options{};
        options.quiet = 1;
        return CallHost<Op::HostDocOpenHidden>(WideOf(path).c_str(), &options);
    }

    static void Flatten(NdxDoc pdf, std::initializer_list<int> pages) {
        const NdxFlattener flattener = CallHost<Op::NDXFlattenerNew>(pdf);
        ASSERT_NE(flattener, nullptr);
        for (const int index : pages) {
            const NdxPage page = CallHost<Op::NDXPageNew>();
            CallHost<Op::NDXPageLoad>(page, pdf, CallHost<Op::NDXDocGetPage>(pdf, index), 0);
            CallHost<Op::NDXFlattenerAddPage>(flattener, page, 1, 0);
            CallHost<Op::NDXPageDestroy>(page);
        }
        CallHost<Op::NDXFlattenerDone>(flattener);
    }
};

TEST_F(PageTextLinesTest, LinesComeInReadingOrderAndAreAppended) {
    const std::string path = testing::WritePdf(
        files_, "lines.pdf",
        engine::PdfDescription{.pages = {engine::PageDescription::TextLines(
                                             {"Dear Ms Roe,", "your claim 4711 is approved."}),
                                         engine::PageDescription::Blank()}});
    const HostDoc doc = app_.OpenDocument(path).document->Handle();
    const NdxDoc pdf = CallHost<Op::HostDocGetPdfDoc>(doc);
    EXPECT_THAT(Lines(pdf, 0), ElementsAre(L"Dear Ms Roe,", L"your claim 4711 is approved."));
    EXPECT_TRUE(Lines(pdf, 1).empty());

    const HostStringArray array = CallHost<Op::HostStringArrayNew>();
    const NdxObject first = CallHost<Op::NDXDocGetPage>(pdf, 0);
    CallHost<Op::NDXPageGetTextLines>(array, pdf, first, 10, 15);
    CallHost<Op::NDXPageGetTextLines>(array, pdf, first, 10, 15);
    EXPECT_EQ(CallHost<Op::HostStringArrayCount>(array), 4);
    // A page dictionary of another document, or no document, adds nothing.
    const HostDoc other = OpenHidden(testing::WritePdf(files_, "other.pdf", testing::ThreePages()));
    CallHost<Op::NDXPageGetTextLines>(array, CallHost<Op::HostDocGetPdfDoc>(other), first, 10, 15);
    CallHost<Op::NDXPageGetTextLines>(array, nullptr, first, 10, 15);
    EXPECT_EQ(CallHost<Op::HostStringArrayCount>(array), 4);
    CallHost<Op::HostStringArrayDestroy>(array);
}

TEST_F(PageTextLinesTest, AFlattenedCopyShowsTypedValuesAsPageText) {
    using engine::FieldKind;
    const std::string path =
        testing::WriteFormPdf(files_, "claim.pdf", {{"Claim form"}, {"Page two"}},
                              {{.kind = FieldKind::kText,
                                .name = "holder",
                                .controls = {{0, {72, 600, 300, 620}}},
                                .value = "Jane Roe"},
                               {.kind = FieldKind::kText,
                                .name = "city",
                                .controls = {{1, {72, 600, 300, 620}}},
                                .value = "Oslo"}});
    const HostDoc doc = OpenHidden(path);
    const NdxDoc pdf = CallHost<Op::HostDocGetPdfDoc>(doc);
    EXPECT_THAT(Lines(pdf, 0), ElementsAre(L"Claim form"));

    Flatten(pdf, {0});
    EXPECT_THAT(Lines(pdf, 0), ElementsAre(L"Claim form", L"Jane Roe"));
    EXPECT_THAT(Lines(pdf, 1), ElementsAre(L"Page two")) << "only the pages asked for";
    EXPECT_EQ(CallHost<Op::HostDocIsModified>(doc), 1);

    Flatten(pdf, {1});
    CallHost<Op::NDXDocSaveToFile>(pdf, path.c_str(), 0, 1);
    EXPECT_EQ(CallHost<Op::HostDocIsModified>(doc), 0) << "written over its own file";
    CallHost<Op::HostDocClose>(doc, 0, 0, 0);

    // The file written over reads back with the typed value as page text.
    const HostDoc reopened = OpenHidden(path);
    EXPECT_THAT(Lines(CallHost<Op::HostDocGetPdfDoc>(reopened), 1),
                ElementsAre(L"Page two", L"Oslo"));
}

TEST_F(PageTextLinesTest, AFlattenerServesOnlyItsOwnDocument) {
    EXPECT_EQ(CallHost<Op::NDXFlattenerNew>(nullptr), nullptr);
    using engine::FieldKind;
    const std::string path = testing::WriteFormPdf(files_, "form.pdf", {{"Form"}},
                                                   {{.kind = FieldKind::kText,
                                                     .name = "a",
                                                     .controls = {{0, {72, 600, 300, 620}}},
                                                     .value = "typed"}});
    const NdxDoc form = CallHost<Op::HostDocGetPdfDoc>(OpenHidden(path));
    const NdxDoc other = CallHost<Op::HostDocGetPdfDoc>(
        OpenHidden(testing::WritePdf(files_, "plain.pdf", testing::ThreePages())));

    const NdxFlattener flattener = CallHost<Op::NDXFlattenerNew>(other);
    const NdxPage page = CallHost<Op::NDXPageNew>();
    CallHost<Op::NDXPageLoad>(page, form, CallHost<Op::NDXDocGetPage>(form, 0), 0);
    CallHost<Op::NDXFlattenerAddPage>(flattener, page, 1, 0);
    CallHost<Op::NDXFlattenerDone>(flattener);
    CallHost<Op::NDXPageDestroy>(page);
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
    EXPECT_THAT(Lines(CallHost<Op::HostDocGetPdfDoc>(doc), 0),
                ElementsAre(L"The confiden-tiality clause", L"Call Ana Lind"));
}

}  // namespace
}  // namespace pdfhost
