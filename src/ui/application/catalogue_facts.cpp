// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
// What people are told of the catalogue, short in the start window and longer in the About window,
// with the digest that records and "vexta --version" name it by.
// The facts read the whole file anew, so they tell what the next run will find, not what the last
// one did. Tested by information_windows_test.cpp.
#include "ui/application/catalogue_facts.h"

#include <cstddef>

#include <QCoreApplication>

#include "catalogue/definition_file.h"
#include "platform/files.h"
#include "ui/widgets/shown_texts.h"

namespace ui {

namespace {

QString catalogueText(const char* text) {
    return QCoreApplication::translate("Catalogue", text);
}

std::size_t countMutations(const catalogue::Catalogue& catalogue) {
    std::size_t count = 0;
    for (const auto& domain : *catalogue.domains) {
        count += archive::orEmpty(domain->mutationMutAr).size();
    }
    return count;
}

QString whyUnreadable(const std::string& path, const std::string& error) {
    return path.empty() ? catalogueText("The catalogue that ships with Vexta is missing.")
                        : catalogueText("The catalogue cannot be read. %1").arg(shownPath(error));
}

} // namespace

QString catalogueFacts(const std::string& definitionFilePath) {
    const auto loaded = catalogue::loadDefinitionFile(definitionFilePath);
    if (!loaded) {
        return whyUnreadable(definitionFilePath, loaded.error().message);
    }
    const catalogue::Catalogue& catalogue = loaded.value();
    QString facts =
        catalogueText("Catalogue: %1\n%2 domains with %3 mutations")
            .arg(shownPath(definitionFilePath), QString::number(catalogue.domains->size()),
                 QString::number(countMutations(catalogue)));
    facts += catalogueText("\nSHA-256: %1").arg(QString::fromStdString(catalogue.digest));
    if (!catalogue.faults.empty()) {
        facts +=
            catalogueText("\n%1 faults: no run can start with it").arg(catalogue.faults.size());
    }
    return facts;
}

QString catalogueNotice(const std::string& definitionFilePath) {
    const auto file = platform::openRegularFile(definitionFilePath);
    return file ? QString()
                : whyUnreadable(definitionFilePath, file.error().message) + QLatin1Char(' ') +
                      catalogueText("No read pair will be assigned.");
}

} // namespace ui
