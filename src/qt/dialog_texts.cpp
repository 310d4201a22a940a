#include "dialog_texts.h"

#include <QPalette>
#include <QWidget>

#include "app/dialog_text_table.h"

QString DialogText(const char* key) {
    const std::string_view text = DialogTextOf(key);
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

bool UsesDarkTheme(const QWidget& widget) {
    return widget.palette().color(QPalette::Window).lightness() < 128;
}

QPixmap DialogPicture(const QString& fileName) {
    QPixmap picture(":/sablemark/" + fileName);
    if (fileName.contains("@2x"))
        picture.setDevicePixelRatio(2.0);
    return picture;
}
