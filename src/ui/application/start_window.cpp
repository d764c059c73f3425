// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
// A program without a window would seem not to have started, and an empty document is nothing to
// look at; so this window is there. It only emits what the user asks for, and the application
// delegate does it. The list of recent files is refreshed when the window comes to the front, since
// another program may have moved them. Tested by start_window_test.cpp.
#include "ui/application/start_window.h"

#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenuBar>
#include <QMimeData>
#include <QPushButton>
#include <QSettings>
#include <QVBoxLayout>

#include "ui/application/recent_files.h"
#include "ui/widgets/files_to_open.h"

namespace ui {

namespace {

constexpr int kSpace = 24;
constexpr int kSpaceBetweenButtons = 8;
constexpr int kButtonHeight = 36;
constexpr int kWaysWidth = 320;
constexpr qreal kHeadingSize = 1.5;

QString geometryKey() {
    return QStringLiteral("startWindow/geometry");
}

QLabel* makeHeading(const QString& text) {
    auto* heading = new QLabel(text);
    QFont font = heading->font();
    font.setPointSizeF(font.pointSizeF() * kHeadingSize);
    heading->setFont(font);
    return heading;
}

QLabel* makeText(const QString& text) {
    auto* label = new QLabel(text);
    label->setWordWrap(true);
    return label;
}

QPushButton* makeButton(const QString& name, const QString& text, const QString& description) {
    auto* button = new QPushButton(text);
    button->setObjectName(name);
    button->setAccessibleDescription(description);
    button->setToolTip(description);
    button->setAutoDefault(true);
    return button;
}

} // namespace

StartWindow::StartWindow(const ApplicationActions& actions, RecentFiles& recentFiles)
    : m_notice(makeText({})), m_dropArea(new DropArea),
      m_recentFilesList(new RecentFilesList(recentFiles)) {
    setObjectName(QStringLiteral("startWindow"));
    setWindowTitle(tr("Vexta"));
    setAcceptDrops(true);
    makeMenus(actions);
    m_notice->setObjectName(QStringLiteral("startNotice"));
    m_notice->setTextFormat(Qt::PlainText);
    m_notice->hide();
    auto* columns = new QHBoxLayout;
    columns->setSpacing(kSpace);
    columns->addLayout(makeWaysToOpen(), 0);
    columns->addLayout(makeRecentFiles(recentFiles), 1);
    auto* content = new QWidget;
    auto* rows = new QVBoxLayout(content);
    rows->setContentsMargins(kSpace, kSpace, kSpace, kSpace);
    rows->setSpacing(kSpace);
    rows->addWidget(m_notice);
    rows->addLayout(columns);
    setCentralWidget(content);
    resize(860, 520);
    restoreGeometry(QSettings().value(geometryKey()).toByteArray());
}

void StartWindow::makeMenus(const ApplicationActions& actions) {
    QMenu* file = menuBar()->addMenu(tr("&File"));
    file->addAction(actions.open);
    file->addMenu(actions.openRecent);
    file->addSeparator();
    QAction* close = file->addAction(tr("&Close"), this, &QWidget::close);
    close->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_W));
    file->addAction(actions.quit);
    QMenu* edit = menuBar()->addMenu(tr("&Edit"));
    edit->addAction(actions.preferences);
    QMenu* help = menuBar()->addMenu(tr("&Help"));
    help->addAction(actions.help);
    help->addSeparator();
    help->addAction(actions.about);
    help->addAction(actions.licences);
}

QLayout* StartWindow::makeWaysToOpen() {
    auto* reads = makeButton(QStringLiteral("openReadsButton"), tr("Open &Reads..."),
                             tr("Choose the read-1 or the read-2 FASTQ file of a patient."));
    auto* folder = makeButton(QStringLiteral("openFolderButton"), tr("Open &Folder..."),
                              tr("Choose the sequencer's folder with the FASTQ files of a run."));
    auto* result = makeButton(QStringLiteral("openResultButton"), tr("Open &Saved Result..."),
                              tr("Choose a result that was saved before, to view and export it."));
    connect(reads, &QPushButton::clicked, this, &StartWindow::openReadsRequested);
    connect(folder, &QPushButton::clicked, this, &StartWindow::openFolderRequested);
    connect(result, &QPushButton::clicked, this, &StartWindow::openResultRequested);
    auto* column = new QVBoxLayout;
    column->setSpacing(kSpaceBetweenButtons);
    column->addWidget(makeHeading(tr("Open a patient's reads")));
    column->addWidget(makeText(
        tr("Choose one FASTQ file; its partner is found by \"_R1_\" and \"_R2_\" in the name. Then "
           "press Analyze for this patient, or Analyze All for every patient of the folder.")));
    column->addSpacing(kSpaceBetweenButtons);
    for (QPushButton* button : {reads, folder, result}) {
        button->setMinimumHeight(kButtonHeight);
        column->addWidget(button);
    }
    column->addSpacing(kSpaceBetweenButtons);
    column->addWidget(m_dropArea, 1);
    m_dropArea->setMinimumWidth(kWaysWidth);
    return column;
}

QLayout* StartWindow::makeRecentFiles(RecentFiles& recentFiles) {
    QLabel* title = makeHeading(tr("Recent f&iles"));
    title->setBuddy(m_recentFilesList);
    auto* none = makeText(tr("Files that you open are listed here."));
    auto* forget = makeButton(QStringLiteral("clearRecentFilesButton"), tr("&Clear List"),
                              tr("Forgets the recent files. The files themselves stay."));
    connect(forget, &QPushButton::clicked, &recentFiles, &RecentFiles::clear);
    connect(m_recentFilesList, &RecentFilesList::openRequested, this, &StartWindow::openRequested);
    const auto showWhatThereIs = [this, none, forget] {
        const bool empty = m_recentFilesList->count() == 0;
        none->setVisible(empty);
        m_recentFilesList->setVisible(!empty);
        forget->setEnabled(!empty);
    };
    connect(&recentFiles, &RecentFiles::changed, this, showWhatThereIs);
    showWhatThereIs();
    auto* column = new QVBoxLayout;
    column->setSpacing(kSpaceBetweenButtons);
    column->addWidget(title);
    column->addWidget(none);
    column->addWidget(m_recentFilesList, 1);
    column->addStretch(0);
    column->addWidget(forget, 0, Qt::AlignRight);
    return column;
}

void StartWindow::setNotice(const QString& text) {
    m_notice->setText(text);
    m_notice->setVisible(!text.isEmpty());
}

void StartWindow::changeEvent(QEvent* event) {
    if (event->type() == QEvent::ActivationChange && isActiveWindow()) {
        m_recentFilesList->refresh();
    }
    QMainWindow::changeEvent(event);
}

void StartWindow::closeEvent(QCloseEvent* event) {
    // The application decides whether the program ends: a run may still go on.
    event->ignore();
    Q_EMIT closeRequested();
}

void StartWindow::hideEvent(QHideEvent* event) {
    QSettings().setValue(geometryKey(), saveGeometry());
    QMainWindow::hideEvent(event);
}

void StartWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (!localFiles(*event->mimeData()).isEmpty()) {
        m_dropArea->setInviting(true);
        event->acceptProposedAction();
    }
}

void StartWindow::dragLeaveEvent(QDragLeaveEvent* event) {
    m_dropArea->setInviting(false);
    QMainWindow::dragLeaveEvent(event);
}

void StartWindow::dropEvent(QDropEvent* event) {
    m_dropArea->setInviting(false);
    event->acceptProposedAction();
    // Later, since opening may show an alert, and the program that the files come from waits for
    // the end of the drop.
    QMetaObject::invokeMethod(
        this, [this, paths = localFiles(*event->mimeData())] { Q_EMIT openRequested(paths); },
        Qt::QueuedConnection);
}

} // namespace ui
