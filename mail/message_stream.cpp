#include "mail/message_stream.h"

#include "core/failure.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr qsizetype BytesPerLine = 57; // 76 characters of base64
constexpr qsizetype LinesAtOnce = 1024;

qint64 encodedSize(qint64 size)
{
    const qint64 characters = (size + 2) / 3 * 4;
    const qint64 lines = (size + BytesPerLine - 1) / BytesPerLine;
    return characters + 2 * lines;
}

// The two characters of each value of 12 bits.
constexpr auto pairsOfDigits()
{
    constexpr char Digits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::array<std::array<char, 2>, 4096> pairs{};
    for (std::size_t value = 0; value < pairs.size(); ++value)
        pairs[value] = {Digits[value >> 6], Digits[value & 63]};
    return pairs;
}

constexpr auto Pairs = pairsOfDigits();

char *putGroup(char *out, const unsigned char *bytes)
{
    const unsigned group = unsigned{bytes[0]} << 16 | unsigned{bytes[1]} << 8 | unsigned{bytes[2]};
    std::memcpy(out, Pairs[group >> 12].data(), 2);
    std::memcpy(out + 2, Pairs[group & 4095].data(), 2);
    return out + 4;
}

// Base64 in lines. Written out at once, since a mail is little else than this.
QByteArray encodedLines(const QByteArray &bytes)
{
    QByteArray lines(encodedSize(bytes.size()), Qt::Uninitialized);
    char *out = lines.data();
    const auto *in = reinterpret_cast<const unsigned char *>(bytes.constData());
    for (qsizetype left = bytes.size(); left > 0;) {
        qsizetype inLine = std::min(left, BytesPerLine);
        left -= inLine;
        for (; inLine >= 3; inLine -= 3, in += 3)
            out = putGroup(out, in);
        if (inLine > 0) {
            const unsigned char rest[3] = {in[0], inLine > 1 ? in[1] : static_cast<unsigned char>(0), 0};
            out = putGroup(out, rest);
            std::memset(out - (3 - inLine), '=', static_cast<std::size_t>(3 - inLine));
        }
        *out++ = '\r';
        *out++ = '\n';
    }
    return lines;
}

} // namespace

void MessageStream::add(const QByteArray &bytes)
{
    m_size += bytes.size();
    m_pieces.emplace_back(bytes);
}

void MessageStream::addFile(const QString &path)
{
    NativeFile file(path, O_RDONLY | O_CLOEXEC);
    struct stat status
    {
    };
    if (!file.isOpen() || ::fstat(file.descriptor(), &status) != 0)
        throw Failure(u"Cannot read '%1': %2"_s.arg(path, qt_error_string(errno)));
    m_size += encodedSize(status.st_size);
    m_pieces.emplace_back(OpenFile{std::move(file), path, status.st_size});
}

QByteArray MessageStream::nextLines(OpenFile &source) const
{
    QByteArray bytes(std::min<qint64>(source.left, BytesPerLine * LinesAtOnce), Qt::Uninitialized);
    qsizetype have = 0;
    while (have < bytes.size()) {
        const auto count = ::read(source.file.descriptor(), bytes.data() + have,
                                  static_cast<std::size_t>(bytes.size() - have));
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            throw Failure(u"Cannot read '%1': %2"_s.arg(source.path, qt_error_string(errno)));
        if (count == 0)
            throw Failure(u"The file '%1' has become shorter"_s.arg(source.path));
        have += count;
    }
    source.left -= have;
    return encodedLines(bytes);
}

qsizetype MessageStream::read(char *bytes, qsizetype size)
{
    while (m_taken == m_current.size()) {
        m_taken = 0;
        m_current = QByteArray();
        if (m_pieces.empty())
            return 0;
        if (auto *file = std::get_if<OpenFile>(&m_pieces.front())) {
            if (file->left > 0) {
                m_current = nextLines(*file);
                continue;
            }
        } else {
            m_current = std::get<QByteArray>(m_pieces.front());
        }
        m_pieces.pop_front();
    }
    const qsizetype count = std::min(size, m_current.size() - m_taken);
    std::memcpy(bytes, m_current.constData() + m_taken, static_cast<std::size_t>(count));
    m_taken += count;
    return count;
}

QByteArray MessageStream::readAll()
{
    QByteArray all(m_size, Qt::Uninitialized);
    qsizetype have = 0;
    while (const qsizetype count = read(all.data() + have, all.size() - have))
        have += count;
    all.truncate(have);
    return all;
}

} // namespace sondrel
