// Draws a page thumbnail as the list would, and a thick frame in the highlight colour around the
// picture of the current page, so that the page shown stands out in the strip, not only its
// number.
#pragma once

#include <QStyledItemDelegate>

namespace pdfhost::ui {

class CurrentPageFrame : public QStyledItemDelegate {
  public:
    static constexpr int kWidth = 3;

    using QStyledItemDelegate::QStyledItemDelegate;
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
};

}  // namespace pdfhost::ui
