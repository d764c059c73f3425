// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Both layouts of the document window are described in files (resources/*.ui), which Qt's loader
// turns into widgets when a window is made. Controls are found by their names, so code and
// descriptions agree on names and kinds alone; a layout can change without a line of code. The
// price is that the compiler sees no missing control: outlet() ends the program instead, and
// window_description_test.cpp loads each description and looks for every outlet.
#include "ui/window/window_description.h"

#include <functional>
#include <map>

#include <QFile>
#include <QUiLoader>

#include "ui/tables/record_table_view.h"
#include "ui/widgets/elided_text_field.h"
#include "ui/window/error_log_window.h"
#include "ui/window/notices.h"
#include "ui/window/popover.h"
#include "ui/window/run_controls.h"

// Outside every namespace, as its macro demands.
static void makeDescriptionsAvailable() {
    Q_INIT_RESOURCE(window_descriptions);
}

namespace ui {
namespace {

using Maker = std::function<QWidget*(QWidget*)>;

template <class Widget>
Maker makerOf() {
    return [](QWidget* parent) { return new Widget(parent); };
}

std::unique_ptr<QWidget> describedWidget(const QString& name, QWidget* parent);

/// Knows our own widgets. It loads the description "DocumentContents" wherever another one names
/// that class, so that the controls of both windows are described once.
class DescriptionLoader : public QUiLoader {
public:
    QWidget* createWidget(const QString& className, QWidget* parent, const QString& name) override {
        static const std::map<QString, Maker> kMakers = {
            {QStringLiteral("ButtonForwardingCancelOperationToDelegate"),
             makerOf<ButtonForwardingCancelOperationToDelegate>()},
            {QStringLiteral("ElidedTextField"), makerOf<ElidedTextField>()},
            {QStringLiteral("ErrorLogWindow"), makerOf<ErrorLogWindow>()},
            {QStringLiteral("FindingNotice"), makerOf<FindingNotice>()},
            {QStringLiteral("NoticeLine"), makerOf<NoticeLine>()},
            {QStringLiteral("PopoverContents"), makerOf<PopoverContents>()},
            {QStringLiteral("RecordTableView"), makerOf<RecordTableView>()},
            {QStringLiteral("DocumentContents"),
             [](QWidget* owner) {
                 return describedWidget(QStringLiteral("DocumentContents"), owner).release();
             }},
        };
        const auto maker = kMakers.find(className);
        if (maker == kMakers.end()) {
            return QUiLoader::createWidget(className, parent, name);
        }
        QWidget* widget = maker->second(parent);
        widget->setObjectName(name);
        return widget;
    }
};

std::unique_ptr<QWidget> describedWidget(const QString& name, QWidget* parent) {
    makeDescriptionsAvailable();
    QFile file(QStringLiteral(":/descriptions/%1.ui").arg(name));
    DescriptionLoader loader;
    loader.setLanguageChangeEnabled(false);
    std::unique_ptr<QWidget> widget;
    if (file.open(QIODevice::ReadOnly)) {
        widget.reset(loader.load(&file, parent));
    }
    if (!widget) {
        qFatal("The window description \"%s\" cannot be loaded: %s", qUtf8Printable(name),
               qUtf8Printable(loader.errorString()));
    }
    return widget;
}

} // namespace

std::unique_ptr<QMainWindow> loadWindowDescription(const QString& name) {
    std::unique_ptr<QWidget> widget = describedWidget(name, nullptr);
    auto* window = qobject_cast<QMainWindow*>(widget.get());
    if (window == nullptr) {
        qFatal("The window description \"%s\" tells of no window", qUtf8Printable(name));
    }
    static_cast<void>(widget.release()); // the same object as `window`
    return std::unique_ptr<QMainWindow>(window);
}

void failForMissingOutlet(const char* name, const char* kind) {
    qFatal("The window description has no %s \"%s\"", kind, name);
}

} // namespace ui
