// The current page's thumbnail stands out by a frame in the highlight colour around its
// picture; the other pages have none, and the frame follows the page shown.
#include <QApplication>
#include <QImage>
#include <QPalette>

#include "annot_calls.h"
#include "ui/document_view.h"
#include "ui/main_window.h"
#include "ui/thumbnail_bar.h"
#include "ui/thumbnail_model.h"

namespace pdfhost {
namespace {

class ThumbnailFrameTest : public testing::AnnotationTablesTest {
  protected:
    // Pixels of the highlight colour in the entry's area of the bar's picture.
    static int FramePixels(ui::ThumbnailBar& bar, int page) {
        const QImage picture = bar.viewport()->grab().toImage();
        const QColor frame = bar.palette().color(QPalette::Active, QPalette::Highlight);
        const QRect area = bar.visualRect(bar.Pages().index(page)) & picture.rect();
        int count = 0;
        for (int y = area.top(); y <= area.bottom(); ++y) {
            for (int x = area.left(); x <= area.right(); ++x)
                count += picture.pixelColor(x, y) == frame ? 1 : 0;
        }
        return count;
    }

    ui::MainWindow window_{app_};
};

TEST_F(ThumbnailFrameTest, OnlyTheCurrentPageIsFramedAndTheFrameFollowsThePage) {
    HostDocument& document = Open({.pages = std::vector<engine::PageDescription>(
                                       4, engine::PageDescription::TextLines({"page text"}))});
    window_.resize(1000, 800);
    window_.show();
    QCoreApplication::processEvents();
    ui::DocumentView* view = nullptr;
    for (auto* shown : window_.findChildren<ui::DocumentView*>()) {
        if (&shown->Document() == &document)
            view = shown;
    }
    ASSERT_NE(view, nullptr);
    ui::ThumbnailBar& bar = view->Thumbnails();
    // Round the picture, at least the frame's length on its two long sides.
    const int least = 2 * ui::ThumbnailModel::kHeight;
    for (const int current : {0, 2}) {
        view->ShowPage(current);
        QCoreApplication::processEvents();
        for (int page = 0; page < 3; ++page) {
            if (page == current)
                EXPECT_GE(FramePixels(bar, page), least) << current;
            else
                EXPECT_EQ(FramePixels(bar, page), 0) << current << ' ' << page;
        }
    }
}

}  // namespace
}  // namespace pdfhost
