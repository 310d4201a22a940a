#include "ui/current_page_frame.h"

#include <QApplication>
#include <QPainter>
#include <QPen>
#include <QStyle>

namespace pdfhost::ui {

void CurrentPageFrame::paint(QPainter* painter, const QStyleOptionViewItem& option,
                             const QModelIndex& index) const {
    QStyledItemDelegate::paint(painter, option, index);
    if (!option.state.testFlag(QStyle::State_Selected))
        return;
    QStyleOptionViewItem item = option;
    initStyleOption(&item, index);
    const QWidget* widget = option.widget;
    const QStyle* style = widget != nullptr ? widget->style() : QApplication::style();
    const QRect picture = style->subElementRect(QStyle::SE_ItemViewItemDecoration, &item, widget);
    painter->save();
    QPen pen(option.palette.color(QPalette::Active, QPalette::Highlight), kWidth);
    pen.setJoinStyle(Qt::MiterJoin);
    painter->setPen(pen);
    painter->setBrush(Qt::NoBrush);
    // The frame lies just outside the picture, which stays whole.
    const int half = kWidth / 2 + 1;
    painter->drawRect(picture.adjusted(-half, -half, half, half));
    painter->restore();
}

}  // namespace pdfhost::ui
