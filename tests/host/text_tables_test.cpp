// Text pages, text finders, field finders and text replacement through the tables, walked the
// way a plug-in walks them.

#include "../engine/engine_test_support.h"
#include "form_sample.h"

namespace pdfhost::testing {
namespace {

struct Found {
    int index = 0;
    int count = 0;
    std::vector<NdxRect> rects;
};

// The rectangles `fill` puts into a fresh rectangle array.
template <typename Fill>
std::vector<NdxRect> ReadRects(Fill&& fill) {
    const NdxRectArray array = Call<NDXRectArrayNew>();
    fill(array);
    std::vector<NdxRect> rects;
    for (int i = 0; i < Call<NDXRectArrayGetCount>(array); ++i)
        rects.push_back(Call<NDXRectArrayGetAt>(array, i));
    Call<NDXRectArrayDestroy>(array);
    return rects;
}

class TextTables : public HostFixture {
  protected:
    HostDocument& OpenLines(const std::vector<std::vector<std::string>>& pages,
                            const std::vector<engine::FieldDescription>& fields = {}) {
        return OpenPath(
            WriteFormPdf(files_, "doc" + std::to_string(++written_) + ".pdf", pages, fields));
    }

    static std::wstring FieldValue(const HostDocument& document, const wchar_t* name) {
        const NdxInterForm form =
            Call<NDXInterFormFromEnvironment>(Call<HostDocGetInterForm>(document.Handle()));
        return ReadWide([&](HostWideString out) {
            Call<NDXFormFieldGetValue>(Call<NDXInterFormGetField>(form, 0, name), out);
        });
    }

    // The matches of a text finder on a page, each with its index, count and rectangles.
    static std::vector<Found> Search(const HostDocument& document, int page, const wchar_t* needle,
                                     uint32_t flags = 0) {
        const NdxTextPage text = Call<NDXTextPageNew>(PageOf(document.Handle(), page), 0);
        if (Call<NDXTextPageIsParsed>(text) == 0)
            Call<NDXTextPageParse>(text);
        const NdxTextFind finder = Call<NDXTextFindNew>(text);
        std::vector<Found> found;
        EXPECT_NE(Call<NDXTextFindStart>(finder, needle, flags, 0), 0);
        while (Call<NDXTextFindNext>(finder) != 0) {
            found.push_back(Found{
                Call<NDXTextFindGetCharIndex>(finder), Call<NDXTextFindGetCharCount>(finder),
                ReadRects([&](NdxRectArray out) { Call<NDXTextFindGetRects>(finder, out); })});
        }
        Call<NDXTextFindDestroy>(finder);
        Call<NDXTextPageDestroy>(text);
        return found;
    }

    // The rectangles of each match of a field finder on a page.
    static std::vector<std::vector<NdxRect>> SearchFields(const HostDocument& document, int page,
                                                          const wchar_t* needle) {
        const NdxFieldFind finder =
            Call<NDXFieldTextFindNew>(document.PdfHandle(), PageOf(document.Handle(), page));
        EXPECT_NE(finder, nullptr);
        std::vector<std::vector<NdxRect>> found;
        EXPECT_NE(Call<NDXFieldTextFindStart>(finder, needle, 0u), 0);
        while (Call<NDXFieldTextFindNext>(finder) != 0) {
            found.push_back(
                ReadRects([&](NdxRectArray out) { Call<NDXFieldTextFindGetRects>(finder, out); }));
        }
        Call<NDXFieldTextFindDestroy>(finder);
        return found;
    }

    std::string SavedText(HostDocument& document) {
        EXPECT_EQ(app_.SaveDocument(document), 1);
        return engine::testing_support::RunCommand("pdftotext '" + document.Path() + "' -");
    }
};

TEST_F(TextTables, MatchesComeWithIndexCountAndOneRectanglePerLineInPageSpace) {
    const HostDocument& document =
        OpenLines({{"Please call John", "Smith today, or john smith"}, {"JOHN SMITH"}});

    const std::vector<Found> found = Search(document, 0, L"John Smith");
    ASSERT_EQ(found.size(), 2u);
    EXPECT_EQ(found[0].index, 12);
    EXPECT_EQ(found[0].count, 9);
    ASSERT_EQ(found[0].rects.size(), 2u);
    EXPECT_LT(found[0].rects[0].bottom, 720);  // first line, baseline 720
    EXPECT_GT(found[0].rects[0].top, 728);
    EXPECT_LT(found[0].rects[1].top, 720);  // second line, baseline 702
    EXPECT_GT(found[0].rects[1].top, 710);
    EXPECT_NEAR(found[0].rects[1].left, 72, 0.5);
    EXPECT_EQ(found[1].index, 32);
    EXPECT_EQ(found[1].rects.size(), 1u);

    EXPECT_EQ(Search(document, 0, L"John Smith", kNdxFindMatchCase).size(), 1u);
    EXPECT_EQ(Search(document, 1, L"john smith").size(), 1u);
    EXPECT_EQ(Search(document, 0, L"Smit", kNdxFindWholeWord).size(), 0u);
    EXPECT_EQ(Search(document, 0, L"Smith", kNdxFindWholeWord | kNdxFindMatchCase).size(), 1u);
    EXPECT_TRUE(Search(document, 1, L"nobody").empty());
}

TEST_F(TextTables, AnUnchangedPageIsReadOnceAndAChangeRereadsIt) {
    HostDocument& document = OpenLines({{"Some words"}});
    const NdxPage page = PageOf(document.Handle(), 0);
    auto parsedText = [&] {
        const NdxTextPage text = Call<NDXTextPageNew>(page, 0);
        EXPECT_EQ(Call<NDXTextPageIsParsed>(text), 0);
        Call<NDXTextPageParse>(text);
        EXPECT_EQ(Call<NDXTextPageIsParsed>(text), 1);
        std::shared_ptr<const engine::PageText> shared = app_.Texts().pages.Find(text)->text;
        Call<NDXTextPageDestroy>(text);
        return shared;
    };
    const std::shared_ptr<const engine::PageText> first = parsedText();
    EXPECT_EQ(parsedText(), first);
    // Nothing of the document is left behind by the destroyed text pages.
    EXPECT_EQ(app_.Texts().pages.Size(), 0u);

    Call<HostDocSetChanged>(document.Handle());
    const std::shared_ptr<const engine::PageText> reread = parsedText();
    ASSERT_NE(reread, nullptr);
    EXPECT_NE(reread, first);
    EXPECT_EQ(reread->CharCount(), first->CharCount());
}

TEST_F(TextTables, StaleNullAndForeignHandlesGetNeutralAnswers) {
    HostDocument& document = OpenLines({{"Alice and Alice"}});
    const HostDocument& other = OpenLines({{"other"}});
    const NdxPage page = PageOf(document.Handle(), 0);
    const NdxRectArray rects = Call<NDXRectArrayNew>();
    Call<NDXRectArrayAdd>(rects, 1, 2, 3, 4);

    EXPECT_EQ(Call<NDXTextPageNew>(nullptr, 0), nullptr);
    EXPECT_EQ(Call<NDXTextFindNew>(nullptr), nullptr);
    EXPECT_EQ(Call<NDXFieldTextFindNew>(other.PdfHandle(), page), nullptr);
    EXPECT_EQ(Call<NDXTextFindStart>(nullptr, L"Alice", 0u, 0), 0);

    const NdxTextPage text = Call<NDXTextPageNew>(page, 0);
    const NdxTextFind finder = Call<NDXTextFindNew>(text);
    EXPECT_EQ(Call<NDXTextFindStart>(finder, L" \r\n", 0u, 0), 0);
    EXPECT_EQ(Call<NDXTextFindStart>(finder, nullptr, 0u, 0), 0);
    // Before the first match: nothing current, the caller's array emptied.
    Call<NDXTextFindGetRects>(finder, rects);
    EXPECT_EQ(Call<NDXRectArrayGetCount>(rects), 0);
    EXPECT_EQ(Call<NDXTextFindGetCharCount>(finder), 0);

    EXPECT_NE(Call<NDXTextFindStart>(finder, L"Alice", 0u, 0), 0);
    EXPECT_EQ(Call<NDXTextFindNext>(finder), 1);
    // The text page may go first: the finder keeps what it searches.
    Call<NDXTextPageDestroy>(text);
    EXPECT_EQ(Call<NDXTextFindNext>(finder), 1);
    EXPECT_EQ(Call<NDXTextFindGetCharIndex>(finder), 10);
    EXPECT_EQ(Call<NDXTextFindNext>(finder), 0);
    EXPECT_EQ(Call<NDXTextFindNext>(finder), 0);
    EXPECT_EQ(Call<NDXTextFindGetCharIndex>(finder), 0);

    EXPECT_EQ(Call<HostDocReplaceText>(document.Handle(), 0, 2, L"Bob"), 0);
    EXPECT_EQ(Call<HostDocReplaceText>(document.Handle(), 1, 0, L"Bob"), 0);
    EXPECT_EQ(Call<HostDocReplaceText>(nullptr, 0, 0, L"Bob"), 0);

    app_.CloseDocument(document);
    EXPECT_EQ(Call<NDXTextFindStart>(finder, L"Alice", 0u, 0), 0);
    EXPECT_EQ(Call<NDXTextFindNext>(finder), 0);
    EXPECT_EQ(Call<NDXTextPageNew>(page, 0), nullptr);
    Call<NDXTextFindDestroy>(finder);
    Call<NDXTextFindDestroy>(finder);
    EXPECT_EQ(Call<NDXTextFindNext>(finder), 0);
    Call<NDXRectArrayDestroy>(rects);
}

TEST_F(TextTables, MatchesAreReplacedByTheOrdinalsOfThePagesLastSearch) {
    HostDocument& document = OpenLines({{"Alice wrote to Alice", "and to Alice Smith"}});
    ASSERT_EQ(Search(document, 0, L"alice").size(), 3u);
    const std::uint64_t revision = document.Engine().Revision();

    // Ordinals keep meaning what the search found, whatever was replaced before.
    EXPECT_EQ(Call<HostDocReplaceText>(document.Handle(), 0, 2, L"Carol"), 1);
    EXPECT_EQ(Call<HostDocReplaceText>(document.Handle(), 0, 0, L"Bob"), 1);
    EXPECT_EQ(Call<HostDocReplaceText>(document.Handle(), 0, 3, L"Dan"), 0);
    EXPECT_TRUE(document.IsModified());
    EXPECT_GT(document.Engine().Revision(), revision);

    // A later search on the page is what ordinals refer to from then on.
    ASSERT_EQ(Search(document, 0, L"Smith").size(), 1u);
    EXPECT_EQ(Call<HostDocReplaceText>(document.Handle(), 0, 0, L"Jones"), 1);

    EXPECT_THAT(SavedText(document),
                HoldsWords({"Bob", "wrote to Alice", "Carol", "Jones"}, {"Smith"}));
}

TEST_F(TextTables, FieldMatchesFollowThePageMatchesAndCanBeReplaced) {
    const engine::FieldDescription note{engine::FieldKind::kText,
                                        "note",
                                        "",
                                        {{0, {72, 500, 372, 520}}},
                                        "Call Alice or alice now"};
    HostDocument& document = OpenLines({{"Alice"}, {"nothing"}}, {note});

    ASSERT_EQ(Search(document, 0, L"Alice").size(), 1u);
    const std::vector<std::vector<NdxRect>> inFields = SearchFields(document, 0, L"Alice");
    ASSERT_EQ(inFields.size(), 2u);
    ASSERT_EQ(inFields[0].size(), 1u);
    // Within the field, the first match left of the second.
    EXPECT_GT(inFields[0][0].left, 72);
    EXPECT_LT(inFields[0][0].right, inFields[1][0].left);
    EXPECT_GE(inFields[0][0].bottom, 499);
    EXPECT_LE(inFields[0][0].top, 521);
    EXPECT_TRUE(SearchFields(document, 1, L"Alice").empty());

    // Ordinal 0 is the page's own text; 1 and 2 the field's matches.
    EXPECT_EQ(Call<HostDocReplaceText>(document.Handle(), 0, 2, L"Bo"), 1);
    EXPECT_EQ(Call<HostDocReplaceText>(document.Handle(), 0, 1, L"Robert"), 1);
    EXPECT_EQ(FieldValue(document, L"note"), L"Call Robert or Bo now");
    EXPECT_TRUE(document.IsModified());
}

TEST_F(TextTables, AChoiceFieldsValueCanBeReplacedByAnotherOptionAndItsShownOptionsNot) {
    using enum engine::FieldKind;
    const std::vector<engine::FieldDescription> fields{
        {kComboBox, "city", "", {{0, {72, 580, 200, 596}}}, "Oslo", {"Oslo", "Bergen"}},
        {kListBox, "pets", "", {{0, {72, 500, 200, 560}}}, "cat", {"cat", "dog", "owl"}}};
    HostDocument& document = OpenLines({{"Pets and places"}}, fields);

    ASSERT_EQ(SearchFields(document, 0, L"Oslo").size(), 1u);
    EXPECT_EQ(Call<HostDocReplaceText>(document.Handle(), 0, 0, L"Tromsø"), 0);
    EXPECT_EQ(Call<HostDocReplaceText>(document.Handle(), 0, 0, L"Bergen"), 1);
    EXPECT_EQ(FieldValue(document, L"city"), L"Bergen");

    // "dog" is an option the list shows, not its value: found, and not written back.
    ASSERT_EQ(SearchFields(document, 0, L"dog").size(), 1u);
    EXPECT_EQ(Call<HostDocReplaceText>(document.Handle(), 0, 0, L"cat"), 0);
    EXPECT_EQ(FieldValue(document, L"pets"), L"cat");
}

}  // namespace
}  // namespace pdfhost::testing
