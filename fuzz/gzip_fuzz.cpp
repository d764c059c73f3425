// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Lets arbitrary bytes make a gzip file, sound or not, and holds the two decoders to each other:
// both find it sound or neither does, and they give the same bytes. Checksums would keep a fuzzer
// out of the second member for ever; so bytes that are chosen as deflate data get the trailer that
// belongs to them.

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <zlib.h>

#include "choices.h"
#include "require.h"

#include "reads/gzip_source.h"
#include "support/gzip.h"
#include "support/memory_stream.h"

namespace {

using fuzzing::Choices;
using fuzzing::require;
using reads::Inflater;

constexpr std::size_t kLargestFile = std::size_t{256} * 1024;
/// Of all members together, beyond which no further one is made.
constexpr std::size_t kMostText = std::size_t{1024} * 1024;
/// What one run of deflate data is decoded to for its trailer, at most.
constexpr std::size_t kLargestMember = std::size_t{4} * 1024 * 1024;

std::string littleEndian(std::uint32_t number, std::size_t size) {
    std::string bytes;
    for (std::size_t i = 0; i < size; ++i) {
        bytes += static_cast<char>(number >> 8 * i & 0xFFU);
    }
    return bytes;
}

std::uint32_t crcOf(const std::string& text) {
    const void* const bytes = text.data();
    return static_cast<std::uint32_t>(::crc32_z(0, static_cast<const Bytef*>(bytes), text.size()));
}

/// What raw deflate data give, as far as they are sound.
std::string inflated(const std::string& deflateData) {
    const std::unique_ptr<Inflater> inflater = reads::makeZlibInflater();
    inflater->start();
    const void* const bytes = deflateData.data();
    const auto* input = static_cast<const unsigned char*>(bytes);
    std::size_t inputSize = deflateData.size();
    std::array<unsigned char, 65536> piece{};
    std::string text;
    reads::InflateStep step;
    do {
        step = inflater->step(input, inputSize, piece.data(), piece.size());
        input += step.taken;
        inputSize -= static_cast<std::size_t>(step.taken);
        text.append(piece.data(), piece.data() + step.produced);
    } while (step.state == reads::InflateStep::State::going && step.produced > 0 &&
             text.size() < kLargestMember);
    return text;
}

std::string memberAround(const std::string& deflateData, const std::string& text,
                         Choices& choices) {
    constexpr unsigned kHeaderCrc = 2;
    constexpr unsigned kExtra = 4;
    constexpr unsigned kName = 8;
    constexpr unsigned kComment = 16;
    const auto flags = static_cast<unsigned>(choices.below(256));
    std::string member = std::string("\x1f\x8b\x08", 3) + static_cast<char>(flags) + "time\x02\x03";
    if ((flags & kExtra) != 0) {
        const std::string extra = choices.bytes(choices.below(1000));
        member += littleEndian(static_cast<std::uint32_t>(extra.size()), 2) + extra;
    }
    for (const unsigned field : {kName, kComment}) {
        if ((flags & field) != 0) {
            member += choices.bytes(choices.below(40)) + '\0';
        }
    }
    if ((flags & kHeaderCrc) != 0) {
        member += littleEndian(crcOf(member), 2);
    }
    return member + deflateData + littleEndian(crcOf(text), 4) +
           littleEndian(static_cast<std::uint32_t>(text.size()), 4);
}

std::string repeated(const std::string& unit, std::size_t count) {
    std::string text;
    for (; count > 0; --count) {
        text += unit;
    }
    return text;
}

/// Members, padding, other bytes, damage, in any order.
std::string makeFile(Choices& choices) {
    std::string file;
    std::size_t textSize = 0;
    while (!choices.atEnd() && file.size() < kLargestFile && textSize < kMostText) {
        switch (choices.below(6)) {
        case 0: {
            const std::string deflateData = choices.bytes(choices.below(4096));
            const std::string text = inflated(deflateData);
            textSize += text.size();
            file += memberAround(deflateData, text, choices);
            break;
        }
        case 1: {
            const std::string unit = choices.bytes(choices.below(300));
            const std::size_t count = choices.choose<std::size_t>({1, 2, 100, 1000});
            textSize += unit.size() * count;
            file += support::gzipMember(repeated(unit, count), static_cast<int>(choices.below(10)));
            break;
        }
        case 2:
            file.append(choices.choose<std::size_t>({1, 2, 7, 8, 512, 65536}), '\0');
            break;
        case 3:
            file += choices.bytes(choices.below(100));
            break;
        case 4:
            if (!file.empty()) {
                char& byte = file[file.size() - 1 - choices.below(65536) % file.size()];
                byte = static_cast<char>(static_cast<unsigned char>(byte) ^ 1U << choices.below(8));
            }
            break;
        default:
            file.resize(file.size() - std::min(file.size(), choices.below(65536)));
            break;
        }
    }
    return file;
}

struct Decoded {
    std::string text;
    std::string warning;
    std::string error;
    std::uint64_t fileBytesTaken = 0;
};

reads::GzipSource sourceOf(const std::string& file, std::unique_ptr<Inflater> inflater,
                           Choices& choices) {
    const auto blockSize = choices.choose<std::size_t>({65536, 4096, 100, 9, 1});
    return {std::make_unique<support::MemoryStream>(file, blockSize), file.size(),
            std::move(inflater)};
}

/// All of it, partly to places of one's own and partly by looking at blocks.
Decoded decoded(const std::string& file, std::unique_ptr<Inflater> inflater, Choices& choices) {
    reads::GzipSource source = sourceOf(file, std::move(inflater), choices);
    std::vector<char> piece(choices.choose<std::size_t>({65536, 32768, 4096, 300}));
    const bool looks = choices.below(2) == 1;
    Decoded decoded;
    std::size_t size = 0;
    do {
        if (looks && decoded.text.size() % 3 == 0) {
            size = std::min(source.available(), piece.size());
            decoded.text.append(source.next(), size);
            source.skip(size);
        } else {
            size = source.read(piece.data(), piece.size());
            decoded.text.append(piece.data(), size);
        }
    } while (size > 0);
    decoded.warning = source.warning();
    decoded.error = source.status() ? std::string() : source.status().error().message;
    decoded.fileBytesTaken = source.fileBytesTaken();
    return decoded;
}

bool oneBeginsWithTheOther(const std::string& a, const std::string& b) {
    const std::size_t size = std::min(a.size(), b.size());
    return a.compare(0, size, b, 0, size) == 0;
}

/// Reading a little and verifying the rest comes to the same judgement. `sound` is what zlib gives:
/// a distance that reaches back before the data ends it, while ISA-L goes on for a while with
/// whatever its window holds, which is other bytes each time, before it says the same.
void requireSameByVerifying(const std::string& file, std::unique_ptr<Inflater> inflater,
                            const Decoded& expected, const std::string& sound, Choices& choices) {
    reads::GzipSource source = sourceOf(file, std::move(inflater), choices);
    std::string some(choices.below(1000), '\0');
    some.resize(source.read(some.data(), some.size()));
    require(oneBeginsWithTheOther(some, sound), "other bytes in a small piece");
    require(!expected.error.empty() || some.size() <= expected.text.size(), "more bytes");
    const platform::Status verified = source.verifyRest();
    require(verified.ok() == expected.error.empty(), "verified as something else",
            (verified ? std::string() : verified.error().message) + " / " + expected.error);
    require(source.warning() == expected.warning, "another warning after verifying",
            source.warning());
}

void requireSame(const Decoded& isal, const Decoded& zlib) {
    const std::string errors = "ISA-L: \"" + isal.error + "\", zlib: \"" + zlib.error + "\"";
    require(isal.error.empty() == zlib.error.empty(), "one decoder fails", errors);
    require(oneBeginsWithTheOther(isal.text, zlib.text), "other bytes", errors);
    if (zlib.error.empty()) {
        require(isal.text.size() == zlib.text.size(), "more bytes");
        require(isal.warning == zlib.warning, "another warning",
                isal.warning + " / " + zlib.warning);
        require(isal.fileBytesTaken == zlib.fileBytesTaken, "another place in the file");
    }
}

} // namespace

// The fuzzer's library calls it by this name.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Choices choices(data, size);
    Choices ways = choices;
    choices.bytes(8);
    const bool asItIs = choices.below(2) == 1;
    const std::string file = asItIs ? choices.rest() : makeFile(choices);
    const Decoded zlib = decoded(file, reads::makeZlibInflater(), ways);
    const Decoded isal = decoded(file, reads::makeIsalInflater(), ways);
    requireSame(isal, zlib);
    requireSameByVerifying(file, reads::makeIsalInflater(), isal, zlib.text, ways);
    return 0;
}
