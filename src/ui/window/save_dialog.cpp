// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
// The toolkit's dialog adds its default suffix only to a name without any dot, takes a directory of
// the process for one of the panel's, and asks about the name before another rule could change it.
// So it has no default suffix here, and whatever leaves it goes through accept(), which makes the
// name first and asks about that one.
//
// The toolkit's dialog also selects in its list what stands in the name's field, and then goes by
// the list, not by the field. But an empty field selects the folder on show, and a selection stays
// for good when the next one has the same row number in another folder. What is typed from then on
// is taken for that folder, or for another file. So a selection that the field does not name is
// dropped, and the field alone says what is chosen. Tested by save_dialog_test.cpp.
#include "ui/window/save_dialog.h"

#include <QDir>
#include <QFileInfo>
#include <QItemSelectionModel>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QPushButton>

#include "ui/widgets/shown_texts.h"

namespace ui {

QString pathWithExtension(const QString& path, const QString& extension) {
    const QString ending = QLatin1Char('.') + extension;
    const auto nameFrom = path.lastIndexOf(QLatin1Char('/')) + 1;
    QString name = path.mid(nameFrom);
    while (!name.isEmpty() && name.back().isSpace()) {
        name.chop(1);
    }
    if (name.endsWith(ending, Qt::CaseInsensitive)) {
        return name.size() > ending.size() ? path.left(nameFrom) + name : QString();
    }
    if (name.endsWith(QLatin1Char('.'))) {
        name.chop(1);
    }
    return name.isEmpty() ? QString() : path.left(nameFrom) + name + ending;
}

namespace {

/// Whether the selection is the one entry of that name in the folder on show.
bool isAllThatIsSelected(const QListView& list, const QString& name) {
    const QItemSelection selection = list.selectionModel()->selection();
    return selection.size() == 1 && selection.front().height() == 1 &&
           selection.front().parent() == list.rootIndex() &&
           selection.front().topLeft().data().toString() == name;
}

} // namespace

SaveDialog::SaveDialog(const QString& extension, const QString& kindOfFile, QWidget* window)
    : QFileDialog(window), m_extension(extension) {
    // The desktop's own dialog closes before the name that it gives can be looked at.
    setOption(DontUseNativeDialog);
    setAcceptMode(AcceptSave);
    setFileMode(AnyFile);
    setNameFilter(QStringLiteral("%1 (*.%2)").arg(kindOfFile, m_extension));
    setWindowModality(Qt::WindowModal);
    setAttribute(Qt::WA_DeleteOnClose);
    letTheFieldDecide();
}

void SaveDialog::letTheFieldDecide() {
    const auto* field = findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    const auto* list = findChild<QListView*>(QStringLiteral("listView"));
    if (!field || !list) {
        return; // their names are the toolkit's own
    }
    // Runs after the dialog's own slot, which selects. A click in the list passes: it puts the name
    // of what it selects into the field.
    connect(field, &QLineEdit::textChanged, list, [list](const QString& text) {
        if (!isAllThatIsSelected(*list, text)) {
            list->selectionModel()->clearSelection();
        }
    });
}

void SaveDialog::accept() {
    const QString chosen = selectedFiles().value(0);
    const QFileInfo target(pathWithExtension(chosen, m_extension));
    if (chosen.isEmpty() || QFileInfo(chosen).isDir()) {
        QFileDialog::accept(); // enters it
    } else if (!QFileInfo(chosen).dir().exists()) {
        refuse(tr("There is no folder %1").arg(QFileInfo(chosen).path()));
    } else if (target.filePath().isEmpty()) {
        refuse(tr("The file needs a name."));
    } else if (target.isDir()) {
        refuse(tr("%1 is a folder.").arg(target.fileName()));
    } else if (target.exists() || target.isSymLink()) {
        askToReplace(target.filePath());
    } else {
        finish(target.filePath());
    }
}

void SaveDialog::finish(const QString& path) {
    Q_EMIT filesSelected({path});
    Q_EMIT fileSelected(path);
    done(QDialog::Accepted);
}

void SaveDialog::askToReplace(const QString& path) {
    QMessageBox& box = makeBox(
        QStringLiteral("replaceQuestion"),
        tr("%1 already exists. Do you want to replace it?").arg(QFileInfo(path).fileName()));
    QPushButton* replace = box.addButton(tr("&Replace"), QMessageBox::AcceptRole);
    box.setDefaultButton(box.addButton(QMessageBox::Cancel));
    connect(replace, &QPushButton::clicked, this, [this, path] { finish(path); });
    box.open();
}

void SaveDialog::refuse(const QString& reason) {
    QMessageBox& box = makeBox(QStringLiteral("refusedName"), reason);
    box.addButton(QMessageBox::Ok);
    box.open();
}

/// On the panel, which stays as it is beneath.
QMessageBox& SaveDialog::makeBox(const QString& name, const QString& text) {
    auto* box =
        new QMessageBox(QMessageBox::Warning, windowTitle(), text, QMessageBox::NoButton, this);
    showTextsAsTheyStand(*box);
    box->setObjectName(name);
    box->setAttribute(Qt::WA_DeleteOnClose);
    return *box;
}

} // namespace ui
