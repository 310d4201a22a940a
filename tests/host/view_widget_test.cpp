// The desktop view follows its view model: the page the tables go to, the selection drawn over
// the page, and the annotation removed by undo; zoom and fit keep the model's device space.
#include <QCoreApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPixmap>
#include <QScrollArea>
#include <QScrollBar>
#include <QSpinBox>
#include <QWheelEvent>

#include "annot_calls.h"
#include "annotation_editor.h"
#include "text_find.h"
#include "ui/document_view.h"
#include "ui/main_window.h"

namespace pdfhost::testing {
namespace {

class ViewWidgetTest : public AnnotationTablesTest {
  protected:
    // The picture of the shown page, once queued repaints have run.
    QPixmap Picture() {
        QCoreApplication::processEvents();
        QPixmap picture;
        for (const QLabel* label : window_.findChildren<QLabel*>()) {
            if (!label->pixmap().isNull())
                picture = label->pixmap();
        }
        return picture;
    }
    QColor ShownAt(int x, int y) { return Picture().toImage().pixelColor(x, y); }
    QSize Shown() { return Picture().size(); }

    ui::MainWindow window_{app_};
};

TEST_F(ViewWidgetTest, PageAndSelectionOfTheModelAreShown) {
    HostDocument& document = Open({.pages = {engine::PageDescription::TextLines({"one"}),
                                             engine::PageDescription::TextLines({"two"})}});
    const ui::DocumentView* shown = window_.findChild<ui::DocumentView*>();
    ASSERT_NE(shown, nullptr);
    const HostDocView view = Call<HostDocGetView>(document.Handle());
    Call<HostDocViewGotoPage>(view, 1);
    QCoreApplication::processEvents();
    EXPECT_EQ(shown->CurrentPage(), 1);

    // An empty stretch of the page: white until selected.
    EXPECT_EQ(ShownAt(300, 300), QColor(Qt::white));
    SelectRects(document, 1, {{200.0f, 500.0f, 260.0f, 600.0f}});
    const QColor selected = ShownAt(300, 300);
    EXPECT_GT(selected.blue(), selected.red()) << "drawn as a selection";
    Call<HostTextSelectToolClear>(Call<HostDocGetTextSelectTool>(document.Handle()));
    EXPECT_EQ(ShownAt(300, 300), QColor(Qt::white));
}

TEST_F(ViewWidgetTest, AnnotationsShowAndUndoTakesThemAway) {
    HostDocument& document = Open({.pages = {engine::PageDescription::Blank()}});
    const NdxObject dict = Call<NDXDictNew>();
    Call<NDXDictSetName>(dict, "Subtype", "Square");
    Call<NDXDictSetRect>(dict, "Rect", NdxRect{200, 500, 260, 600});
    Call<NDXDictSetObject>(dict, "IC", Numbers({0, 0, 1}), document.PdfHandle());
    ASSERT_NE(AddThroughView(document, 0, dict), nullptr);
    const QColor drawn = ShownAt(307, 307);
    EXPECT_LT(drawn.red(), 128) << "the square's appearance shows";
    ASSERT_TRUE(AnnotationEditor(app_).UndoLast(document));
    EXPECT_EQ(ShownAt(307, 307), QColor(Qt::white));
}

TEST_F(ViewWidgetTest, ZoomAndFitScaleThePageButNotTheModelsDeviceSpace) {
    // US Letter: 816 x 1056 pixels at 100 %.
    HostDocument& document = Open({.pages = {engine::PageDescription::TextLines({"one"}),
                                             engine::PageDescription::TextLines({"two"})}});
    auto* shown = window_.findChild<ui::DocumentView*>();
    ASSERT_NE(shown, nullptr);
    QWidget* viewport = shown->findChild<QScrollArea*>()->viewport();
    EXPECT_EQ(Shown(), QSize(816, 1056));

    shown->SetZoom(2.0);
    EXPECT_EQ(Shown(), QSize(1632, 2112));
    // The model's selection at device (300, 300) is drawn at twice that.
    SelectRects(document, 0, {{200.0f, 500.0f, 260.0f, 600.0f}});
    EXPECT_EQ(ShownAt(300, 300), QColor(Qt::white));
    EXPECT_GT(ShownAt(600, 600).blue(), ShownAt(600, 600).red());

    // The model scrolls in its own pixels; the view by as many zoomed ones.
    window_.resize(900, 700);
    window_.show();
    QCoreApplication::processEvents();
    Call<HostDocViewScrollTo>(Call<HostDocGetView>(document.Handle()), 0, 100);
    QCoreApplication::processEvents();
    EXPECT_EQ(shown->findChild<QScrollArea*>()->verticalScrollBar()->value(), 200);

    // Fitting follows the view's size, as when the task pane opens beside it.
    shown->SetFit(ui::DocumentView::Fit::kWidth);
    EXPECT_NEAR(Shown().width(), viewport->width() - 8, 2);
    shown->SetFit(ui::DocumentView::Fit::kPage);
    const int tall = viewport->height();
    EXPECT_NEAR(Shown().height(), tall - 8, 2);
    window_.resize(600, 500);
    QCoreApplication::processEvents();
    EXPECT_LT(Shown().height(), tall - 8);

    // Ctrl+wheel zooms in steps; the page number goes to its page.
    const double before = shown->Zoom();
    QWheelEvent wheel(QPointF(10, 10), QPointF(10, 10), {}, QPoint(0, 120), Qt::NoButton,
                      Qt::ControlModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(viewport, &wheel);
    EXPECT_NEAR(shown->Zoom(), before * 1.25, 1e-9);
    shown->findChild<QSpinBox*>(QStringLiteral("PageNumber"))->setValue(2);
    EXPECT_EQ(shown->CurrentPage(), 1);
    window_.hide();
}

TEST_F(ViewWidgetTest, FindGoesRoundTheDocumentBothWaysAndSelectsTheMatch) {
    HostDocument& document =
        Open({.pages = {engine::PageDescription::TextLines({"alpha beta alpha"}),
                        engine::PageDescription::TextLines({"nothing here"}),
                        engine::PageDescription::TextLines({"ALPHA"})}});
    const auto pattern = engine::TextPattern::Compile(U"alpha", {});
    ASSERT_TRUE(pattern);
    const FoundText p0a{0, {0, 5}}, p0b{0, {11, 5}}, p2{2, {0, 5}};
    const struct {
        std::optional<FoundText> from;
        int startPage;
        bool forward;
        std::optional<FoundText> found;
    } cases[] = {
        {std::nullopt, 1, true, p2}, {std::nullopt, 1, false, p0b},
        {p0a, 0, true, p0b},         {p0b, 0, true, p2},
        {p2, 0, true, p0a},          {p0a, 0, false, p2},
        {p0b, 0, false, p0a},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(FindInDocument(document, *pattern, c.from, c.startPage, c.forward), c.found)
            << (c.from ? c.from->page : -1) << " " << c.forward;
    }
    const auto once = engine::TextPattern::Compile(U"beta", {});
    EXPECT_EQ(FindInDocument(document, *once, FoundText{0, {6, 4}}, 0, true),
              (FoundText{0, {6, 4}}));  // the only match is found again
    EXPECT_EQ(FindInDocument(document, *engine::TextPattern::Compile(U"gamma", {}), {}, 0, true),
              std::nullopt);

    // The view's find bar: the match is selected and its page shown.
    auto* shown = window_.findChild<ui::DocumentView*>();
    shown->StartFind();
    shown->findChild<QLineEdit*>(QStringLiteral("FindText"))->setText(QStringLiteral("alpha"));
    EXPECT_TRUE(shown->FindNext(true));
    EXPECT_EQ(document.View()->Selection().Ranges(),
              (std::vector<TextSelection::Range>{{0, 0, 4}}));
    EXPECT_TRUE(shown->FindNext(false));
    EXPECT_EQ(shown->CurrentPage(), 2);
    EXPECT_EQ(document.View()->Selection().Ranges(),
              (std::vector<TextSelection::Range>{{2, 0, 4}}));
    shown->findChild<QLineEdit*>(QStringLiteral("FindText"))->setText(QStringLiteral("gamma"));
    EXPECT_FALSE(shown->FindNext(true));
}

}  // namespace
}  // namespace pdfhost::testing
