// What the desktop offers beside the page: thumbnails that are drawn when in sight, frame the
// current page and go to their page, and the Redact tool (a dragged area, the selected text)
// with undo.
#include <QAction>
#include <QCoreApplication>
#include <QIcon>
#include <QLabel>
#include <QMouseEvent>
#include <QPalette>

#include "annot_calls.h"
#include "annotation_editor.h"
#include "engine/redaction.h"
#include "recording_hooks.h"
#include "ui/document_view.h"
#include "ui/main_window.h"
#include "ui/thumbnail_bar.h"
#include "ui/thumbnail_model.h"
#include "user_redaction_mark.h"

namespace pdfhost::testing {
namespace {

void SendMouse(QWidget* target, QEvent::Type type, QPoint at) {
    const Qt::MouseButtons held =
        type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, QPointF(at), target->mapToGlobal(QPointF(at)), Qt::LeftButton, held,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(target, &event);
}

void Click(QWidget* target, QPoint at) {
    SendMouse(target, QEvent::MouseButtonPress, at);
    SendMouse(target, QEvent::MouseButtonRelease, at);
}

QAction* MenuEntry(QWidget& window, const QString& text) {
    for (QAction* action : window.findChildren<QAction*>()) {
        if (action->text().remove(QLatin1Char('&')) == text)
            return action;
    }
    return nullptr;
}

struct RedactMark {
    engine::Rect rect;
    std::vector<float> quads;
    bool named = false;
};

// The document's Redact annotations, page by page.
std::vector<RedactMark> RedactMarks(HostDocument& document) {
    engine::Document& pdf = document.Engine();
    std::vector<RedactMark> marks;
    for (const engine::AnnotationId& id : engine::Redactor(pdf).RedactAnnotations()) {
        const engine::PdfValue entries =
            engine::ValueOf(pdf.fz(), engine::Annotations(pdf).Dictionary(id.object).get(), 0);
        RedactMark mark{
            engine::Annotations(pdf).RectOf(id.object), {}, entries.Get("NM") != nullptr};
        if (const engine::PdfValue* quads = entries.Get("QuadPoints")) {
            for (const engine::PdfValue& number : quads->Items())
                mark.quads.push_back(number.Number());
        }
        marks.push_back(mark);
    }
    return marks;
}

void ExpectQuads(const std::vector<float>& quads, const std::vector<engine::Rect>& rects,
                 float tolerance) {
    const std::vector<float> want = Quads(rects);
    ASSERT_EQ(quads.size(), want.size());
    for (std::size_t i = 0; i < want.size(); ++i)
        EXPECT_NEAR(quads[i], want[i], tolerance) << i;
}

// The pages among the first `count` whose thumbnail is framed in the highlight colour: at least
// the frame's length on the picture's two long sides. -1 stands for a page with less.
std::vector<int> FramedPages(ui::ThumbnailBar& bar, int count) {
    const QImage picture = bar.viewport()->grab().toImage();
    const QColor frame = bar.palette().color(QPalette::Active, QPalette::Highlight);
    std::vector<int> framed;
    for (int page = 0; page < count; ++page) {
        const QRect area = bar.visualRect(bar.Pages().index(page)) & picture.rect();
        int pixels = 0;
        for (int y = area.top(); y <= area.bottom(); ++y) {
            for (int x = area.left(); x <= area.right(); ++x)
                pixels += picture.pixelColor(x, y) == frame ? 1 : 0;
        }
        if (pixels > 0)
            framed.push_back(pixels >= 2 * ui::ThumbnailModel::kHeight ? page : -1);
    }
    return framed;
}

class DesktopToolsTest : public AnnotationTablesTest {
  protected:
    ui::DocumentView* ShownView(HostDocument& document) {
        window_.resize(1000, 800);
        window_.show();
        QCoreApplication::processEvents();
        for (auto* view : window_.findChildren<ui::DocumentView*>()) {
            if (&view->Document() == &document)
                return view;
        }
        return nullptr;
    }

    ui::MainWindow window_{app_};
};

TEST_F(DesktopToolsTest, ThumbnailsAreDrawnInSightGoToTheirPageAndHideFromTheViewMenu) {
    HostDocument& document = Open({.pages = std::vector<engine::PageDescription>(
                                       60, engine::PageDescription::TextLines({"page text"}))});
    ui::DocumentView* view = ShownView(document);
    ASSERT_NE(view, nullptr);
    ui::ThumbnailBar& bar = view->Thumbnails();
    ui::ThumbnailModel& pages = bar.Pages();
    ASSERT_TRUE(bar.isVisible());
    (void)window_.grab();  // paints what is in sight

    // Those in sight are drawn, as pictures of their page; those far below are not.
    EXPECT_TRUE(pages.IsDrawn(0) && pages.IsDrawn(1));
    EXPECT_FALSE(pages.IsDrawn(59));
    const QPixmap first =
        pages.data(pages.index(0), Qt::DecorationRole)
            .value<QIcon>()
            .pixmap(QSize(ui::ThumbnailModel::kWidth, ui::ThumbnailModel::kHeight),
                    QIcon::Selected);
    EXPECT_EQ(first.width(), ui::ThumbnailModel::kWidth);
    EXPECT_EQ(first.toImage().pixelColor(2, 2), QColor(Qt::white));
    EXPECT_EQ(bar.currentIndex().row(), 0);
    EXPECT_EQ(FramedPages(bar, 4), std::vector<int>{0}) << "only the current page is framed";

    // A click on the second one shows its page, selects it and moves the frame there.
    const QRect second = bar.visualRect(pages.index(1));
    ASSERT_TRUE(bar.viewport()->rect().contains(second.center()));
    Click(bar.viewport(), second.center());
    EXPECT_EQ(view->CurrentPage(), 1);
    EXPECT_EQ(bar.currentIndex().row(), 1);
    view->ShowPage(2);
    QCoreApplication::processEvents();
    EXPECT_EQ(FramedPages(bar, 4), std::vector<int>{2});

    // A change of the document draws the pictures in sight anew.
    ASSERT_TRUE(pages.IsDrawn(2));
    ASSERT_NE(AddUserRedaction(app_, document, 2, {{100, 600, 300, 700}}), nullptr);
    EXPECT_FALSE(pages.IsDrawn(2));
    (void)bar.grab();
    EXPECT_TRUE(pages.IsDrawn(2));

    // Going through the whole document keeps a bounded number of pictures.
    for (int page = 0; page < 60; page += 3) {
        view->ShowPage(page);
        (void)bar.grab();
    }
    EXPECT_EQ(bar.currentIndex().row(), 57);
    EXPECT_TRUE(pages.IsDrawn(57));
    EXPECT_LE(pages.DrawnCount(), ui::ThumbnailModel::kKeptPictures);

    QAction* shown = MenuEntry(window_, QStringLiteral("Page Thumbnails"));
    ASSERT_NE(shown, nullptr);
    shown->trigger();
    EXPECT_FALSE(bar.isVisible());
    shown->trigger();
    EXPECT_TRUE(bar.isVisible());
}

TEST_F(DesktopToolsTest, ADragWithTheRedactToolMarksThatAreaOfThePageAndUndoTakesItAway) {
    // US Letter, 612 x 792 points: 2 pixels a point at 150 %.
    HostDocument& document = Open({.pages = {engine::PageDescription::TextLines({"one"})}});
    ui::DocumentView* view = ShownView(document);
    ASSERT_NE(view, nullptr);
    view->SetZoom(1.5);
    QCoreApplication::processEvents();
    auto* picture = view->findChild<QLabel*>(QStringLiteral("PagePicture"));
    ASSERT_NE(picture, nullptr);
    const QSize page = picture->pixmap().size();
    ASSERT_EQ(page, QSize(1224, 1584));
    const QPoint origin((picture->width() - page.width()) / 2,
                        (picture->height() - page.height()) / 2);

    // Without the tool a drag draws nothing.
    SendMouse(picture, QEvent::MouseButtonPress, origin + QPoint(100, 100));
    SendMouse(picture, QEvent::MouseButtonRelease, origin + QPoint(300, 300));
    EXPECT_TRUE(RedactMarks(document).empty());

    RecordingHooks hooks;
    Call<HostAppRegisterDocEvents>(hooks.Record());
    ASSERT_NE(AddUserRedaction(app_, document, 0, {{10, 10, 20, 20}}), nullptr);
    ASSERT_TRUE(AnnotationEditor(app_).UndoLast(document));
    hooks.Take();

    MenuEntry(window_, QStringLiteral("Redact Area"))->trigger();
    ASSERT_TRUE(view->RedactToolOn());
    SendMouse(picture, QEvent::MouseButtonPress, origin + QPoint(449, 599));
    SendMouse(picture, QEvent::MouseMove, origin + QPoint(300, 400));
    SendMouse(picture, QEvent::MouseMove, origin + QPoint(149, 299));
    SendMouse(picture, QEvent::MouseButtonRelease, origin + QPoint(149, 299));
    const std::vector<RedactMark> marks = RedactMarks(document);
    ASSERT_EQ(marks.size(), 1u);
    ExpectQuads(marks[0].quads, {{74.5f, 792 - 300.0f, 225, 792 - 149.5f}}, 0.01f);
    EXPECT_FALSE(marks[0].named) << "the user's own mark carries no plug-in's name";
    EXPECT_TRUE(document.IsModified());
    // Plug-ins hear of each mark, though the document was modified before.
    EXPECT_EQ(hooks.Take(), std::vector<std::string>{"modified 1"});

    // A click is no area.
    Click(picture, origin + QPoint(500, 500));
    EXPECT_EQ(RedactMarks(document).size(), 1u);

    ASSERT_TRUE(AnnotationEditor(app_).UndoLast(document));
    EXPECT_TRUE(RedactMarks(document).empty());
}

TEST_F(DesktopToolsTest, RedactSelectionCoversTheSelectedTextPageByPage) {
    HostDocument& document =
        Open({.pages = {engine::PageDescription::TextLines({"alpha beta", "gamma alpha"}),
                        engine::PageDescription::TextLines({"beta"})}});
    ui::DocumentView* view = ShownView(document);
    ASSERT_NE(view, nullptr);
    const auto alpha = engine::testing_support::WordRects(document.Engine(), 0, "alpha");
    const auto beta = engine::testing_support::WordRects(document.Engine(), 1, "beta");
    ASSERT_EQ(alpha.size(), 2u);
    ASSERT_EQ(beta.size(), 1u);
    EXPECT_EQ(view->RedactSelection(), 0) << "nothing selected";

    // A rectangle selection is covered as it stands.
    SelectRects(document, 0,
                {{alpha[0].left, alpha[0].bottom, alpha[0].right, alpha[0].top},
                 {alpha[1].left, alpha[1].bottom, alpha[1].right, alpha[1].top}});
    EXPECT_EQ(view->RedactSelection(), 1);
    std::vector<RedactMark> marks = RedactMarks(document);
    ASSERT_EQ(marks.size(), 1u);
    ExpectQuads(marks[0].quads, alpha, 0.01f);
    EXPECT_NEAR(marks[0].rect.top, alpha[0].top, 0.01);
    EXPECT_NEAR(marks[0].rect.bottom, alpha[1].bottom, 0.01);
    ASSERT_TRUE(AnnotationEditor(app_).UndoLast(document));

    // Found text on two pages: one mark per page, over the found characters' line boxes.
    document.View()->SelectRanges({{0, 0, 4}, {1, 0, 3}});
    EXPECT_EQ(view->RedactSelection(), 2);
    marks = RedactMarks(document);
    ASSERT_EQ(marks.size(), 2u);
    ExpectQuads(marks[0].quads, {alpha[0]}, 1.5f);
    ExpectQuads(marks[1].quads, {beta[0]}, 1.5f);
    EXPECT_TRUE(AnnotationEditor(app_).UndoLast(document));
    EXPECT_TRUE(AnnotationEditor(app_).UndoLast(document));
    EXPECT_TRUE(RedactMarks(document).empty());
}

}  // namespace
}  // namespace pdfhost::testing
