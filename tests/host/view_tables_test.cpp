// The document view model through the tables, the text select tool and the scripted state,
// the message box with scripted answers, the tools, and the scripted user's redaction.
#include <gmock/gmock.h>

#include <sstream>

#include "annot_calls.h"
#include "annotation_editor.h"
#include "automation/script_session.h"
#include "script_lines.h"

namespace pdfhost {
namespace {

using testing::AnnotationTablesTest;
using testing::CallHost;
using Op = hostops::Op;

class ViewTablesTest : public AnnotationTablesTest {
  protected:
    // Handles the lines and gives what they printed, one parsed value per line.
    std::vector<Json::Value> Script(std::initializer_list<std::string> lines) {
        out_.str("");
        for (const std::string& line : lines)
            session_.HandleLine(line);
        return testing::ParseScriptLines(out_.str());
    }
    Json::Value StateOf(int number) {
        const auto lines = Script({R"({"host":"state"})"});
        for (const Json::Value& entry : lines.back()["state"]["documents"]) {
            if (entry["number"].asInt() == number)
                return entry;
        }
        return Json::Value();
    }

    std::ostringstream out_;
    ScriptSession session_{app_, out_};
};

const engine::PdfDescription kThreePages{
    .pages = {engine::PageDescription::TextLines({"first page"}),
              engine::PageDescription::TextLines({"second page"}),
              engine::PageDescription::TextLines({"third page"})}};

TEST_F(ViewTablesTest, PagesScrollingAndTheVisibleRectangle) {
    HostDocument& document = Open(kThreePages);
    const HostDoc doc = document.Handle();
    const HostDocView view = CallHost<Op::HostDocGetView>(doc);
    ASSERT_NE(view, nullptr);
    const HostPageView third = CallHost<Op::HostDocViewGetPageView>(view, 2);
    EXPECT_EQ(third, CallHost<Op::HostDocGetPageView>(doc, 2));
    EXPECT_EQ(CallHost<Op::HostDocViewGetPageView>(view, 3), nullptr);
    EXPECT_EQ(CallHost<Op::HostDocViewGetCurrentPageView>(view),
              CallHost<Op::HostDocGetPageView>(doc, 0));
    EXPECT_EQ(CallHost<Op::HostPageViewGetVisibleRect>(third).top, 0.0f) << "not shown";

    CallHost<Op::HostDocViewGotoPage>(view, 2);
    EXPECT_EQ(CallHost<Op::HostDocViewGetCurrentPageView>(view), third);
    EXPECT_EQ(StateOf(document.Number())["page"].asInt(), 2);
    // The default viewport shows the page's width and 450 points of its height, from the top.
    NdxRect visible = CallHost<Op::HostPageViewGetVisibleRect>(third);
    EXPECT_EQ((std::vector<float>{visible.left, visible.bottom, visible.right, visible.top}),
              (std::vector<float>{0, 342, 612, 792}));

    NdxPoint point{72, 720};
    int x = -1, y = -1;
    CallHost<Op::HostPageViewPointToDevice>(third, &point, &x, &y);
    EXPECT_EQ(x, 96);
    EXPECT_EQ(y, 96);
    CallHost<Op::HostDocViewScrollTo>(view, 0, 200);
    visible = CallHost<Op::HostPageViewGetVisibleRect>(third);
    EXPECT_EQ(visible.top, 642.0f);
    EXPECT_EQ(visible.bottom, 192.0f);
    CallHost<Op::HostDocViewScrollTo>(view, 500, 5000);
    visible = CallHost<Op::HostPageViewGetVisibleRect>(third);
    EXPECT_EQ(visible.bottom, 0.0f) << "scrolling stops at the page's end";
    EXPECT_EQ(visible.left, 0.0f);

    document.View()->TakeInvalidated();
    CallHost<Op::HostDocViewInvalidateRect>(view, 1, 2, 3, 4);
    EXPECT_EQ(document.View()->TakeInvalidated(), (std::vector<DeviceRect>{{1, 2, 3, 4}}));
    CallHost<Op::HostDocViewGotoPage>(view, 7);
    EXPECT_EQ(CallHost<Op::HostDocViewGetCurrentPageView>(view), third) << "no such page";

    HostDocument& hidden = Open(kThreePages, false);
    EXPECT_EQ(CallHost<Op::HostDocGetView>(hidden.Handle()), nullptr);
    const HostPageView hidden_page = CallHost<Op::HostDocGetPageView>(hidden.Handle(), 0);
    CallHost<Op::HostPageViewPointToDevice>(hidden_page, &point, &x, &y);
    EXPECT_EQ(x, 96) << "a page of a document without a view still converts";
    app_.CloseDocument(document);
    EXPECT_EQ(CallHost<Op::HostDocViewGetCurrentPageView>(view), nullptr);
    EXPECT_EQ(CallHost<Op::HostPageViewGetVisibleRect>(third).top, 0.0f);
}

TEST_F(ViewTablesTest, SelectionByRectanglesOrCharacterRangesShowsInTheState) {
    HostDocument& document = Open(kThreePages);
    const HostDoc doc = document.Handle();
    const HostTextSelectTool tool = CallHost<Op::HostDocGetTextSelectTool>(doc);
    ASSERT_NE(tool, nullptr);
    EXPECT_TRUE(StateOf(document.Number())["selection"].isNull());

    const NdxRectArray rects = CallHost<Op::NDXRectArrayNew>();
    CallHost<Op::NDXRectArrayAdd>(rects, 72.0f, 700.0f, 120.0f, 715.5f);
    CallHost<Op::HostTextSelectToolSelectRects>(tool, CallHost<Op::HostDocGetPageView>(doc, 1),
                                                rects);
    CallHost<Op::NDXRectArrayDestroy>(rects);
    Json::Value selection = StateOf(document.Number())["selection"];
    EXPECT_EQ(selection["page"].asInt(), 1);
    ASSERT_EQ(selection["rects"].size(), 1u);
    EXPECT_EQ(selection["rects"][0][3].asFloat(), 715.5f);

    // As the plug-in builds it: page -> array of pointers to (start, end) pairs, all freed
    // right after the call.
    {
        const std::int32_t later[2] = {3, 7};
        const std::int32_t earlier[2] = {0, 1};
        const std::int32_t backwards[2] = {5, 2};
        const HostMap map = CallHost<Op::HostMapNew>(3);
        const HostPtrArray on_two = CallHost<Op::HostPtrArrayNew>();
        CallHost<Op::HostPtrArrayAdd>(on_two, const_cast<std::int32_t*>(later));
        const HostPtrArray on_zero = CallHost<Op::HostPtrArrayNew>();
        CallHost<Op::HostPtrArrayAdd>(on_zero, const_cast<std::int32_t*>(earlier));
        CallHost<Op::HostPtrArrayAdd>(on_zero, const_cast<std::int32_t*>(backwards));
        const HostPtrArray beyond = CallHost<Op::HostPtrArrayNew>();
        CallHost<Op::HostPtrArrayAdd>(beyond, const_cast<std::int32_t*>(earlier));
        CallHost<Op::HostMapSet>(map, reinterpret_cast<const void*>(std::intptr_t{2}), on_two);
        CallHost<Op::HostMapSet>(map, reinterpret_cast<const void*>(std::intptr_t{0}), on_zero);
        CallHost<Op::HostMapSet>(map, reinterpret_cast<const void*>(std::intptr_t{9}), beyond);
        CallHost<Op::HostTextSelectToolSelectRanges>(tool, map);
        for (const HostPtrArray array : {on_two, on_zero, beyond})
            CallHost<Op::HostPtrArrayDestroy>(array);
        CallHost<Op::HostMapDestroy>(map);
    }
    selection = StateOf(document.Number())["selection"];
    EXPECT_FALSE(selection.isMember("rects"));
    ASSERT_EQ(selection["ranges"].size(), 2u) << "a page beyond the document and a backwards "
                                                 "range are left out";
    EXPECT_EQ(selection["ranges"][0]["page"].asInt(), 0);
    EXPECT_EQ(selection["ranges"][0]["end"].asInt(), 1);
    EXPECT_EQ(selection["ranges"][1]["page"].asInt(), 2);
    EXPECT_EQ(selection["ranges"][1]["start"].asInt(), 3);
    EXPECT_EQ(selection["ranges"][1]["end"].asInt(), 7);

    CallHost<Op::HostTextSelectToolClear>(tool);
    EXPECT_TRUE(StateOf(document.Number())["selection"].isNull());
    app_.CloseDocument(document);
    CallHost<Op::HostTextSelectToolClear>(tool);
    EXPECT_EQ(CallHost<Op::HostDocGetTextSelectTool>(doc), nullptr);
}

TEST_F(ViewTablesTest, MessageBoxTakesTheQueuedAnswerOfItsKind) {
    EXPECT_TRUE(Script({R"({"host":"answer","dialog":"messageBox","value":1})",
                        R"({"host":"answer","dialog":"fileOpen","value":null})"})
                    .empty());
    int check = 7;
    EXPECT_EQ(CallHost<Op::HostMessageBox>(L"Apply?", 1, L"Confirm", &check, nullptr), 1);
    EXPECT_EQ(check, 0);
    // No answer left for a message box: it is cancelled (the fileOpen answer is not its own).
    EXPECT_EQ(CallHost<Op::HostMessageBox>(L"Again?", 1, L"Confirm", nullptr, nullptr), 2);
    EXPECT_EQ(CallHost<Op::HostMessageBox>(L"Sure?", 4, L"", nullptr, nullptr), 7);
    EXPECT_EQ(CallHost<Op::HostMessageBox>(L"Note", 0x40, L"", nullptr, nullptr), 1);
    EXPECT_EQ(app_.Answers().Pending("fileOpen"), 1u);

    const std::string printed = out_.str();
    std::istringstream in(printed);
    std::vector<std::string> text;
    for (std::string line; std::getline(in, line);)
        text.push_back(line);
    ASSERT_EQ(text.size(), 7u) << printed;
    EXPECT_EQ(text[0], R"({"answer":1,"dialog":"messageBox","text":"Apply?","title":"Confirm"})");
    EXPECT_EQ(text[1], R"({"answer":2,"dialog":"messageBox","text":"Again?","title":"Confirm"})");
    EXPECT_EQ(text[2], R"({"unanswered":"messageBox"})");
    EXPECT_EQ(text[4], R"({"unanswered":"messageBox"})");
    EXPECT_EQ(Script({R"({"host":"answer","dialog":"messageBox"})"})[0]["error"].asString(),
              "\"answer\" needs a \"value\"");
}

TEST_F(ViewTablesTest, ToolsByNameAndTheCurrentTool) {
    EXPECT_EQ(Script({R"({"host":"state"})"})[0]["state"]["tool"].asString(), "Select");
    const HostTool hand = CallHost<Op::HostAppGetToolByName>("Hand");
    ASSERT_NE(hand, nullptr);
    EXPECT_EQ(CallHost<Op::HostAppGetToolByName>("Hand"), hand);
    EXPECT_EQ(CallHost<Op::HostAppGetToolByName>("Lasso"), nullptr);
    EXPECT_EQ(CallHost<Op::HostAppGetToolByName>(nullptr), nullptr);
    CallHost<Op::HostAppSetCurrentTool>(hand, 1);
    CallHost<Op::HostAppSetCurrentTool>(nullptr, 1);
    EXPECT_EQ(Script({R"({"host":"state"})"})[0]["state"]["tool"].asString(), "Hand");
}

TEST_F(ViewTablesTest, UserRedactLineDrawsAnUndoableRedaction) {
    HostDocument& document = Open(kThreePages);
    const std::string doc = std::to_string(document.Number());
    const auto errors =
        Script({R"({"host":"userRedact","doc":)" + doc + R"(,"page":3,"rect":[1,2,3,4]})",
                R"({"host":"userRedact","doc":)" + doc + R"(,"page":1,"rect":[1,2,3]})",
                R"({"host":"userRedact","doc":)" + doc + R"(,"page":1,"rect":[5,5,5,9]})",
                R"({"host":"userRedact","doc":)" + doc + R"(,"page":1,"rect":[300,700,72,716]})"});
    ASSERT_EQ(errors.size(), 3u);
    for (const Json::Value& line : errors)
        EXPECT_TRUE(line["error"].isString());

    const HostPageView view = CallHost<Op::HostDocGetPageView>(document.Handle(), 1);
    ASSERT_EQ(CallHost<Op::HostPageViewCountAnnots>(view), 1);
    const HostAnnot drawn = CallHost<Op::HostPageViewGetAnnot>(view, 0);
    EXPECT_EQ(Subtype(drawn), "Redact");
    const NdxRect rect =
        CallHost<Op::NDXAnnotGetRect>(CallHost<Op::NDXHostAnnotGetPdfAnnot>(drawn));
    EXPECT_EQ((std::vector<float>{rect.left, rect.bottom, rect.right, rect.top}),
              (std::vector<float>{72, 700, 300, 716}));
    const HostByteString name = CallHost<Op::HostByteStringNew>();
    CallHost<Op::NDXDictGetString>(
        CallHost<Op::NDXAnnotGetDict>(CallHost<Op::NDXHostAnnotGetPdfAnnot>(drawn)), "NM", name);
    EXPECT_EQ(testing::ByteText(name), "") << "no plug-in's name on it";
    CallHost<Op::HostByteStringDelete>(name);
    EXPECT_TRUE(StateOf(document.Number())["modified"].asBool());

    EXPECT_TRUE(AnnotationEditor(app_).UndoLast(document));
    EXPECT_EQ(CallHost<Op::HostPageViewCountAnnots>(view), 0);
}

}  // namespace
}  // namespace pdfhost
