// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
// A path is bytes to the engine and text to Qt; both ways go through QFile's encoding of names.
// Qt's labels and tool tips guess whether a text is HTML: the name "<b>x" would lose its first
// letters, and a name could show a picture. Tested by document_files_test.cpp and
// message_alerts_test.cpp.
#include "ui/widgets/shown_texts.h"

#include <QFile>
#include <QLabel>
#include <QTextDocument>
#include <QUrl>

#include "platform/files.h"

namespace ui {

namespace {

QString withoutTrailingSlashes(QString path) {
    while (path.size() > 1 && path.endsWith(QLatin1Char('/'))) {
        path.chop(1);
    }
    return path;
}

} // namespace

std::string enginePath(const QString& path) {
    return QFile::encodeName(path).toStdString();
}

QString shownPath(const std::string& path) {
    return QFile::decodeName(QByteArray::fromStdString(path));
}

QString pathOfArgument(const QString& argument) {
    const QString path =
        argument.startsWith(QStringLiteral("file:")) ? QUrl(argument).toLocalFile() : argument;
    return withoutTrailingSlashes(shownPath(platform::absolutePath(enginePath(path))));
}

QString plainToolTip(const QString& text) {
    return Qt::mightBeRichText(text) ? QStringLiteral("<qt>") + text.toHtmlEscaped() : text;
}

void showTextsAsTheyStand(QMessageBox& box) {
    for (QLabel* label : box.findChildren<QLabel*>()) {
        label->setTextFormat(Qt::PlainText);
    }
}

} // namespace ui
