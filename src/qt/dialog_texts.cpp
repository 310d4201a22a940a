#include "dialog_texts.h"

#include <QPalette>
#include <QWidget>

#include "keyed_texts.h"

namespace {

constexpr KeyedText kDialogTexts[] = {
    {"IDS_STRING_WELCOME_TITLE", "Welcome to Sable Mark"},
    {"IDS_STRING_WELCOME_DESCRIPTION",
     "Sable Mark finds personal and confidential content in your PDF documents, such as names, "
     "e-mail addresses, phone, card and ID numbers, and removes it for good."},
    {"IDS_STRING_BULB_TITLE", "Before you start"},
    {"IDS_STRING_BULB_DESCRIPTION",
     "Sign in to your Sable Mark account to redact your documents. New here? Signing up takes a "
     "minute."},
    {"IDS_STRING_BULB_DESCRIPTION_CHANNEL",
     "Sign in with the account of your editor to redact your documents. New here? Signing up "
     "takes a minute."},
    {"IDS_STRING_GET_STARTED", "Get started"},
    {"IDS_STRING_SIGN_UP", "Sign up"},
    {"IDS_STRING_NOT_NOW", "Not now"},
    {"IDS_STRING_DLG_INFO_DES",
     "Sable Mark can find and remove confidential content in the document you are working on. "
     "Open it from the Protect tab of the ribbon."},
};

}  // namespace

QString DialogText(const char* key) {
    return TextOfKey(kDialogTexts, key);
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
