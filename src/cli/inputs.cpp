// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Where a command finds its inputs, and what it says of one that it cannot use. The pairing rule
// goes by names alone, so nearly all trouble is a name: a message shows the names that were looked
// for, and those that nearly fit.
//
// A path loses "." and "..", since the directory's name appears in results. The text alone decides
// that, except behind a "..", where a link may lead elsewhere. Tested by inputs_test.cpp.
#include "cli/inputs.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <string_view>
#include <system_error>

#include "platform/files.h"
#include "platform/resources.h"

namespace cli {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kNamesShown = 10;

bool endsWith(std::string_view text, std::string_view end) {
    return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

/// Whether the name is one of reads, by its ending.
bool looksLikeReads(std::string_view name) {
    if (endsWith(name, ".gz")) {
        name.remove_suffix(3);
    }
    return endsWith(name, ".fastq") || endsWith(name, ".fq");
}

/// Up to "..", a link leads elsewhere than its text says, so the file system decides.
fs::path normalDirectory(const fs::path& directory) {
    std::error_code failure;
    const bool climbs = std::find(directory.begin(), directory.end(), "..") != directory.end();
    const fs::path resolved = climbs ? fs::canonical(directory, failure) : fs::path();
    return climbs && !failure ? resolved : directory.lexically_normal();
}

} // namespace

std::string normalPath(const std::string& path) {
    fs::path absolute = platform::absolutePath(path);
    while (!absolute.has_filename() && absolute.has_relative_path()) {
        absolute = absolute.parent_path(); // a slash at the end
    }
    if (absolute.filename() == "." || absolute.filename() == "..") {
        const std::string directory = normalDirectory(absolute).string();
        return directory.size() > 1 && directory.back() == '/'
                   ? directory.substr(0, directory.size() - 1)
                   : directory;
    }
    return (normalDirectory(absolute.parent_path()) / absolute.filename()).string();
}

platform::Status checkReadsFile(const std::string& path) {
    const auto file = platform::openRegularFile(path);
    return file ? platform::Status() : platform::Status(file.error());
}

std::string whyUnpaired(const std::string& path, const document::ReadPairFiles& files) {
    const std::string name = platform::lastPathComponent(path);
    if (!files.file1 || !files.file2) {
        return name + ": the name holds neither \"_R1_\" nor \"_R2_\"";
    }
    const std::string mate = *files.file1 == name ? *files.file2 : *files.file1;
    const std::string extension = platform::pathExtension(mate);
    if (extension != "fastq" && extension != "gz") {
        return name + ": the name ends neither in \".fastq\" nor in \".gz\"";
    }
    const std::string other =
        extension == "gz" ? platform::withoutPathExtension(mate) : mate + ".gz";
    return name + ": found neither " + mate + " nor " + other + " in " + files.directory;
}

platform::Result<std::optional<std::string>> chooseDefinitionFile(const Arguments& arguments) {
    if (!arguments.cataloguePath) {
        return platform::resourcePath("ReferenceNucleotideSequence", "txt");
    }
    const auto file = platform::openRegularFile(*arguments.cataloguePath);
    if (!file) {
        return platform::Error{arguments.catalogueNamedBy + ": " + file.error().message};
    }
    return arguments.cataloguePath;
}

std::vector<std::string> whyNoPatients(const std::string& directory,
                                       const std::vector<std::string>& names, bool anyName) {
    std::vector<std::string> lines = {
        "no read pair in " + directory +
        (anyName ? ": expected names like *_R1.fastq.gz and *_R2.fastq.gz"
                 : ": expected names like *_S<1-1000>_L001_R1_001.fastq[.gz] "
                   "and *_S<1-1000>_L001_R2_001.fastq[.gz]")};
    std::vector<std::string> near;
    std::copy_if(names.begin(), names.end(), std::back_inserter(near), looksLikeReads);
    std::sort(near.begin(), near.end());
    if (!near.empty()) {
        lines.emplace_back("files of reads with other names are not used:");
    }
    for (std::size_t i = 0; i < std::min(near.size(), kNamesShown); ++i) {
        lines.push_back("  " + near[i]);
    }
    if (near.size() > kNamesShown) {
        lines.push_back("  and " + std::to_string(near.size() - kNamesShown) + " more");
    }
    return lines;
}

} // namespace cli
