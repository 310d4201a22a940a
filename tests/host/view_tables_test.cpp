// The document view model through the tables, the text select tool and the scripted state,
// the message box with scripted answers, the tools, and the scripted user's redaction.

#include "annot_calls.h"
#include "script_lines.h"

namespace pdfhost::testing {
namespace {

class ViewTablesTest : public AnnotationTablesTest {
  protected:
    Json::Value StateOf(int number) {
        const auto lines = script_.Run({R"({"host":"state"})"});
        for (const Json::Value& entry : lines.back()["state"]["documents"]) {
            if (entry["number"].asInt() == number)
                return entry;
        }
        return Json::Value();
    }

    Scripted script_{app_};
};

TEST_F(ViewTablesTest, PagesScrollingAndTheVisibleRectangle) {
    HostDocument& document = Open(ThreePages());
    const HostDoc doc = document.Handle();
    const HostDocView view = Call<HostDocGetView>(doc);
    ASSERT_NE(view, nullptr);
    const HostPageView third = Call<HostDocViewGetPageView>(view, 2);
    EXPECT_EQ(third, Call<HostDocGetPageView>(doc, 2));
    EXPECT_EQ(Call<HostDocViewGetPageView>(view, 3), nullptr);
    EXPECT_EQ(Call<HostDocViewGetCurrentPageView>(view), Call<HostDocGetPageView>(doc, 0));
    EXPECT_EQ(Call<HostPageViewGetVisibleRect>(third).top, 0.0f) << "not shown";

    Call<HostDocViewGotoPage>(view, 2);
    EXPECT_EQ(Call<HostDocViewGetCurrentPageView>(view), third);
    EXPECT_EQ(StateOf(document.Number())["page"].asInt(), 2);
    // The default viewport shows the page's width and 450 points of its height, from the top.
    EXPECT_EQ(Corners(Call<HostPageViewGetVisibleRect>(third)),
              (std::vector<float>{0, 342, 612, 792}));

    NdxPoint point{72, 720};
    int x = -1, y = -1;
    Call<HostPageViewPointToDevice>(third, &point, &x, &y);
    EXPECT_EQ(x, 96);
    EXPECT_EQ(y, 96);
    Call<HostDocViewScrollTo>(view, 0, 200);
    EXPECT_EQ(Corners(Call<HostPageViewGetVisibleRect>(third)),
              (std::vector<float>{0, 192, 612, 642}));
    Call<HostDocViewScrollTo>(view, 500, 5000);
    EXPECT_EQ(Corners(Call<HostPageViewGetVisibleRect>(third)),
              (std::vector<float>{0, 0, 612, 450}))
        << "scrolling stops at the page's end";

    document.View()->TakeInvalidated();
    Call<HostDocViewInvalidateRect>(view, 1, 2, 3, 4);
    EXPECT_EQ(document.View()->TakeInvalidated(), (std::vector<DeviceRect>{{1, 2, 3, 4}}));
    Call<HostDocViewGotoPage>(view, 7);
    EXPECT_EQ(Call<HostDocViewGetCurrentPageView>(view), third) << "no such page";

    HostDocument& hidden = Open(ThreePages(), false);
    EXPECT_EQ(Call<HostDocGetView>(hidden.Handle()), nullptr);
    const HostPageView hidden_page = Call<HostDocGetPageView>(hidden.Handle(), 0);
    Call<HostPageViewPointToDevice>(hidden_page, &point, &x, &y);
    EXPECT_EQ(x, 96) << "a page of a document without a view still converts";
    app_.CloseDocument(document);
    EXPECT_EQ(Call<HostDocViewGetCurrentPageView>(view), nullptr);
    EXPECT_EQ(Call<HostPageViewGetVisibleRect>(third).top, 0.0f);
}

TEST_F(ViewTablesTest, SelectionByRectanglesOrCharacterRangesShowsInTheState) {
    HostDocument& document = Open(ThreePages());
    const HostDoc doc = document.Handle();
    const HostTextSelectTool tool = Call<HostDocGetTextSelectTool>(doc);
    ASSERT_NE(tool, nullptr);
    EXPECT_TRUE(StateOf(document.Number())["selection"].isNull());

    SelectRects(document, 1, {{72.0f, 700.0f, 120.0f, 715.5f}});
    Json::Value selection = StateOf(document.Number())["selection"];
    EXPECT_EQ(selection["page"].asInt(), 1);
    ASSERT_EQ(selection["rects"].size(), 1u);
    EXPECT_EQ(selection["rects"][0][3].asFloat(), 715.5f);

    // As the plug-in builds it: page -> array of pointers to (start, end) pairs, all freed
    // right after the call.
    const std::int32_t later[2] = {3, 7}, earlier[2] = {0, 1}, backwards[2] = {5, 2};
    const auto ranges = [](std::initializer_list<const std::int32_t*> pairs) {
        const HostPtrArray array = Call<HostPtrArrayNew>();
        for (const std::int32_t* pair : pairs)
            Call<HostPtrArrayAdd>(array, const_cast<std::int32_t*>(pair));
        return array;
    };
    const std::pair<std::intptr_t, HostPtrArray> pages[] = {
        {2, ranges({later})}, {0, ranges({earlier, backwards})}, {9, ranges({earlier})}};
    const HostMap map = Call<HostMapNew>(3);
    for (const auto& [page, array] : pages)
        Call<HostMapSet>(map, reinterpret_cast<const void*>(page), array);
    Call<HostTextSelectToolSelectRanges>(tool, map);
    for (const auto& [page, array] : pages)
        Call<HostPtrArrayDestroy>(array);
    Call<HostMapDestroy>(map);
    // A page beyond the document and a backwards range are left out.
    EXPECT_EQ(Compact(StateOf(document.Number())["selection"]),
              R"({"ranges":[{"end":1,"page":0,"start":0},{"end":7,"page":2,"start":3}]})");

    Call<HostTextSelectToolClear>(tool);
    EXPECT_TRUE(StateOf(document.Number())["selection"].isNull());
    app_.CloseDocument(document);
    Call<HostTextSelectToolClear>(tool);
    EXPECT_EQ(Call<HostDocGetTextSelectTool>(doc), nullptr);
}

TEST_F(ViewTablesTest, MessageBoxTakesTheQueuedAnswerOfItsKind) {
    EXPECT_TRUE(script_
                    .Run({R"({"host":"answer","dialog":"messageBox","value":1})",
                          R"({"host":"answer","dialog":"fileOpen","value":null})"})
                    .empty());
    int check = 7;
    EXPECT_EQ(Call<HostMessageBox>(L"Apply?", 1, L"Confirm", &check, nullptr), 1);
    EXPECT_EQ(check, 0);
    // No answer left for a message box: it is cancelled (the fileOpen answer is not its own).
    EXPECT_EQ(Call<HostMessageBox>(L"Again?", 1, L"Confirm", nullptr, nullptr), 2);
    EXPECT_EQ(Call<HostMessageBox>(L"Sure?", 4, L"", nullptr, nullptr), 7);
    EXPECT_EQ(Call<HostMessageBox>(L"Note", 0x40, L"", nullptr, nullptr), 1);
    EXPECT_EQ(app_.Answers().Pending("fileOpen"), 1u);

    EXPECT_EQ(script_.TakeTexts(),
              (std::vector<std::string>{
                  R"({"answer":1,"dialog":"messageBox","text":"Apply?","title":"Confirm"})",
                  R"({"answer":2,"dialog":"messageBox","text":"Again?","title":"Confirm"})",
                  R"({"unanswered":"messageBox"})",
                  R"({"answer":7,"dialog":"messageBox","text":"Sure?","title":""})",
                  R"({"unanswered":"messageBox"})",
                  R"({"answer":1,"dialog":"messageBox","text":"Note","title":""})",
                  R"({"unanswered":"messageBox"})"}));
    EXPECT_EQ(script_.Run({R"({"host":"answer","dialog":"messageBox"})"})[0]["error"].asString(),
              "\"answer\" needs a \"value\"");
}

TEST_F(ViewTablesTest, ToolsByNameAndTheCurrentTool) {
    EXPECT_EQ(script_.Run({R"({"host":"state"})"})[0]["state"]["tool"].asString(), "Select");
    const HostTool hand = Call<HostAppGetToolByName>("Hand");
    ASSERT_NE(hand, nullptr);
    EXPECT_EQ(Call<HostAppGetToolByName>("Hand"), hand);
    EXPECT_EQ(Call<HostAppGetToolByName>("Lasso"), nullptr);
    EXPECT_EQ(Call<HostAppGetToolByName>(nullptr), nullptr);
    Call<HostAppSetCurrentTool>(hand, 1);
    Call<HostAppSetCurrentTool>(nullptr, 1);
    EXPECT_EQ(script_.Run({R"({"host":"state"})"})[0]["state"]["tool"].asString(), "Hand");
}

TEST_F(ViewTablesTest, UserRedactLineDrawsARedactionOverTheRectangle) {
    HostDocument& document = Open(ThreePages());
    const std::string doc = std::to_string(document.Number());
    const auto errors = script_.Run(
        {R"({"host":"userRedact","doc":)" + doc + R"(,"page":3,"rect":[1,2,3,4]})",
         R"({"host":"userRedact","doc":)" + doc + R"(,"page":1,"rect":[1,2,3]})",
         R"({"host":"userRedact","doc":)" + doc + R"(,"page":1,"rect":[5,5,5,9]})",
         R"({"host":"userRedact","doc":)" + doc + R"(,"page":1,"rect":[300,700,72,716]})"});
    ASSERT_EQ(errors.size(), 3u);
    for (const Json::Value& line : errors)
        EXPECT_TRUE(line["error"].isString());

    // Drawn with its corners put in order.
    const HostPageView view = Call<HostDocGetPageView>(document.Handle(), 1);
    ASSERT_EQ(Call<HostPageViewCountAnnots>(view), 1);
    const HostAnnot drawn = Call<HostPageViewGetAnnot>(view, 0);
    EXPECT_EQ(Corners(Call<NDXAnnotGetRect>(Call<NDXHostAnnotGetPdfAnnot>(drawn))),
              (std::vector<float>{72, 700, 300, 716}));
    EXPECT_TRUE(StateOf(document.Number())["modified"].asBool());
}

}  // namespace
}  // namespace pdfhost::testing
