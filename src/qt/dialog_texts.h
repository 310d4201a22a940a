// The texts of the plug-in's own dialogs, by their IDS_ keys (English, the one language the
// plug-in starts in), and the pictures of those dialogs for the host's colour theme.
#pragma once

#include <QPixmap>
#include <QString>

class QWidget;

// The text of a key; the key itself when the table has no such key.
QString DialogText(const char* key);

// Whether `widget` shows in a dark theme: its window colour is dark.
bool UsesDarkTheme(const QWidget& widget);

// A picture of the dialogs' resources by file name, drawn at the device's pixel ratio when the
// name carries "@2x".
QPixmap DialogPicture(const QString& fileName);
