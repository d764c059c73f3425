// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "platform/sha256.h"

#include <array>
#include <stdexcept>

#include <openssl/evp.h>

namespace platform {
namespace {

constexpr std::size_t kDigestSize = 32;

/// OpenSSL fails here only where it was built without SHA-256, or memory has run out.
void require(int done) {
    if (done != 1) {
        throw std::runtime_error("the cryptographic library computes no SHA-256");
    }
}

} // namespace

struct Sha256::State {
    std::unique_ptr<EVP_MD_CTX, void (*)(EVP_MD_CTX*)> context{EVP_MD_CTX_new(), EVP_MD_CTX_free};
};

Sha256::Sha256() : m_state(std::make_unique<State>()) {
    require(EVP_DigestInit_ex(m_state->context.get(), EVP_sha256(), nullptr));
}

Sha256::~Sha256() = default;

void Sha256::add(std::string_view bytes) {
    require(EVP_DigestUpdate(m_state->context.get(), bytes.data(), bytes.size()));
}

std::string Sha256::hex() {
    std::array<unsigned char, kDigestSize> digest{};
    require(EVP_DigestFinal_ex(m_state->context.get(), digest.data(), nullptr));
    static constexpr std::string_view kDigits = "0123456789abcdef";
    std::string text;
    for (const unsigned byte : digest) {
        text += kDigits[byte >> 4U];
        text += kDigits[byte & 0xfU];
    }
    return text;
}

std::string sha256(std::string_view bytes) {
    Sha256 digest;
    digest.add(bytes);
    return digest.hex();
}

} // namespace platform
