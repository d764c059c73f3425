// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/application/licence_texts.h"

#include <QList>

#include "reads/read_source.h"

namespace ui {

namespace {

/// Licence terms are quoted, so none of this is translated.
struct Component {
    const char* name;
    const char* use;
    const char* licence;
    const char* copyright;
};

constexpr Component kQt{
    "Qt", "windows (linked dynamically: it may be replaced by another build of its version)",
    "GNU Lesser General Public License, version 3", "The Qt Company Ltd. and other contributors"};
constexpr Component kExpat{"Expat", "reads result documents in their XML form", "MIT",
                           "1998-2000 Thai Open Source Software Center Ltd and Clark Cooper, "
                           "2001-2017 Expat maintainers"};
constexpr Component kIsal{"ISA-L", "decodes .gz", "BSD 3-Clause", "2011-2019 Intel Corporation"};
constexpr Component kZlib{"zlib", "decodes .gz", "zlib", "Jean-loup Gailly and Mark Adler"};
constexpr Component kAsio{"Asio", "worker threads", "Boost Software License 1.0",
                          "2003-2022 Christopher M. Kohlhoff"};
constexpr Component kJson{"JSON for Modern C++", "the settings file", "MIT",
                          "2013-2022 Niels Lohmann, 2009 Florian Loitsch, 2008-2009 Bjoern "
                          "Hoehrmann"};

constexpr const char* kOwn =
    "Vexta\n"
    "Copyright: The Vexta authors\n"
    "Licence: Apache License, Version 2.0, https://www.apache.org/licenses/LICENSE-2.0\n"
    "Distributed on an \"AS IS\" basis, without warranties or conditions of any kind, either "
    "express "
    "or implied.\n"
    "\n"
    "It is built with:\n"
    "\n";

constexpr const char* kMit =
    "The MIT licence\n"
    "\n"
    "Permission is hereby granted, free of charge, to any person obtaining a copy of this software "
    "and associated documentation files (the \"Software\"), to deal in the Software without "
    "restriction, including without limitation the rights to use, copy, modify, merge, publish, "
    "distribute, sublicense, and/or sell copies of the Software, and to permit persons to whom the "
    "Software is furnished to do so, subject to the following conditions:\n"
    "\n"
    "The above copyright notice and this permission notice shall be included in all copies or "
    "substantial portions of the Software.\n"
    "\n"
    "THE SOFTWARE IS PROVIDED \"AS IS\", WITHOUT WARRANTY OF ANY KIND, EXPRESS OR IMPLIED, "
    "INCLUDING "
    "BUT NOT LIMITED TO THE WARRANTIES OF MERCHANTABILITY, FITNESS FOR A PARTICULAR PURPOSE AND "
    "NONINFRINGEMENT. IN NO EVENT SHALL THE AUTHORS OR COPYRIGHT HOLDERS BE LIABLE FOR ANY CLAIM, "
    "DAMAGES OR OTHER LIABILITY, WHETHER IN AN ACTION OF CONTRACT, TORT OR OTHERWISE, ARISING "
    "FROM, "
    "OUT OF OR IN CONNECTION WITH THE SOFTWARE OR THE USE OR OTHER DEALINGS IN THE SOFTWARE.\n"
    "\n"
    "On Debian the whole text of every licence stands in /usr/share/common-licenses and in "
    "/usr/share/doc/<package>/copyright.\n";

QString licenceOf(const Component& component) {
    return QStringLiteral("%1: %2\nLicence: %3\nCopyright: %4\n\n")
        .arg(QString::fromUtf8(component.name), QString::fromUtf8(component.use),
             QString::fromUtf8(component.licence), QString::fromUtf8(component.copyright));
}

} // namespace

QString licenceTexts() {
    QList<Component> components{kQt, kExpat};
    if (reads::gzipBackendAvailable(reads::GzipBackend::isal)) {
        components.append(kIsal);
    }
    components.append({kZlib, kAsio, kJson});
    QString text = QString::fromUtf8(kOwn);
    for (const Component& component : components) {
        text += licenceOf(component);
    }
    return text + QString::fromUtf8(kMit);
}

} // namespace ui
