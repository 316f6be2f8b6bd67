#include "base/ContentHash.h"

#include "base/FileError.h"
#include "base/RegularFile.h"

#include <openssl/evp.h>

#include <array>
#include <cerrno>
#include <memory>
#include <new>
#include <vector>

namespace tessary {
namespace {

class Sha256 {
public:
    Sha256() : m_context(EVP_MD_CTX_new(), &EVP_MD_CTX_free)
    {
        if (!m_context || EVP_DigestInit_ex(m_context.get(), EVP_sha256(), nullptr) != 1)
            throw std::bad_alloc();
    }
    void add(QByteArrayView bytes)
    {
        if (EVP_DigestUpdate(m_context.get(), bytes.data(), static_cast<size_t>(bytes.size())) != 1)
            throw std::bad_alloc();
    }
    [[nodiscard]] QString hexadecimal()
    {
        std::array<unsigned char, EVP_MAX_MD_SIZE> digest{};
        unsigned int size = 0;
        if (EVP_DigestFinal_ex(m_context.get(), digest.data(), &size) != 1)
            throw std::bad_alloc();
        const QByteArray raw(reinterpret_cast<const char*>(digest.data()), static_cast<qsizetype>(size));
        return QString::fromLatin1(raw.toHex());
    }

private:
    std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> m_context;
};

constexpr size_t kPieceSize = 256 * 1024;

} // namespace

QString contentHash(QByteArrayView bytes)
{
    Sha256 digest;
    digest.add(bytes);
    return digest.hexadecimal();
}

FileDigest digestOfFile(const QString& path)
{
    const FileDescriptor file = openRegularFile(path);
    Sha256 digest;
    std::vector<char> piece(kPieceSize);
    qint64 total = 0;
    for (;;) {
        const ssize_t count = ::read(file.get(), piece.data(), piece.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            throw FileError::fromErrno(errno, path, FileError::Operation::Read);
        if (count == 0)
            return {digest.hexadecimal(), total};
        digest.add(QByteArrayView(piece.data(), count));
        total += count;
    }
}

} // namespace tessary
