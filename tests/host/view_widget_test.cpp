// The desktop view follows its view model: the page the tables go to, the selection drawn over
// the page, and the annotation removed by undo.
#include <QCoreApplication>
#include <QLabel>
#include <QPixmap>

#include "annot_calls.h"
#include "annotation_editor.h"
#include "ui/document_view.h"
#include "ui/main_window.h"

namespace pdfhost {
namespace {

using testing::AnnotationTablesTest;
using testing::CallHost;
using Op = hostops::Op;

class ViewWidgetTest : public AnnotationTablesTest {
  protected:
    // The colour of the shown page at device point (x, y), once queued repaints have run.
    QColor ShownAt(int x, int y) {
        QCoreApplication::processEvents();
        const QLabel* picture = nullptr;
        for (const QLabel* label : window_.findChildren<QLabel*>()) {
            if (!label->pixmap().isNull())
                picture = label;
        }
        return picture != nullptr ? picture->pixmap().toImage().pixelColor(x, y) : QColor();
    }

    ui::MainWindow window_{app_};
};

TEST_F(ViewWidgetTest, PageAndSelectionOfTheModelAreShown) {
    HostDocument& document = Open({.pages = {engine::PageDescription::TextLines({"one"}),
                                             engine::PageDescription::TextLines({"two"})}});
    const ui::DocumentView* shown = window_.findChild<ui::DocumentView*>();
    ASSERT_NE(shown, nullptr);
    const HostDocView view = CallHost<Op::HostDocGetView>(document.Handle());
    CallHost<Op::HostDocViewGotoPage>(view, 1);
    QCoreApplication::processEvents();
    EXPECT_EQ(shown->CurrentPage(), 1);

    // An empty stretch of the page: white until selected.
    EXPECT_EQ(ShownAt(300, 300), QColor(Qt::white));
    const NdxRectArray rects = CallHost<Op::NDXRectArrayNew>();
    CallHost<Op::NDXRectArrayAdd>(rects, 200.0f, 500.0f, 260.0f, 600.0f);
    CallHost<Op::HostTextSelectToolSelectRects>(
        CallHost<Op::HostDocGetTextSelectTool>(document.Handle()),
        CallHost<Op::HostDocGetPageView>(document.Handle(), 1), rects);
    CallHost<Op::NDXRectArrayDestroy>(rects);
    const QColor selected = ShownAt(300, 300);
    EXPECT_GT(selected.blue(), selected.red()) << "drawn as a selection";
    CallHost<Op::HostTextSelectToolClear>(
        CallHost<Op::HostDocGetTextSelectTool>(document.Handle()));
    EXPECT_EQ(ShownAt(300, 300), QColor(Qt::white));
}

TEST_F(ViewWidgetTest, AnnotationsShowAndUndoTakesThemAway) {
    HostDocument& document = Open({.pages = {engine::PageDescription::Blank()}});
    const NdxObject dict = CallHost<Op::NDXDictNew>();
    CallHost<Op::NDXDictSetName>(dict, "Subtype", "Square");
    CallHost<Op::NDXDictSetRect>(dict, "Rect", NdxRect{200, 500, 260, 600});
    CallHost<Op::NDXDictSetObject>(dict, "IC", Numbers({0, 0, 1}), document.PdfHandle());
    ASSERT_NE(AddThroughView(document, 0, dict), nullptr);
    const QColor drawn = ShownAt(307, 307);
    EXPECT_LT(drawn.red(), 128) << "the square's appearance shows";
    ASSERT_TRUE(AnnotationEditor(app_).UndoLast(document));
    EXPECT_EQ(ShownAt(307, 307), QColor(Qt::white));
}

}  // namespace
}  // namespace pdfhost
