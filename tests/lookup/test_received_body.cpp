#include "lookup/received_body.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

constexpr qsizetype Long = 3 * ReceivedBody::LongestInMemory + 17;

// Bytes that tell their place.
QByteArray sample(qsizetype size)
{
    QByteArray bytes(size, Qt::Uninitialized);
    for (qsizetype i = 0; i < size; ++i)
        bytes[i] = static_cast<char>(i % 251);
    return bytes;
}

void append(ReceivedBody &body, const QByteArray &bytes, qsizetype piece)
{
    for (qsizetype at = 0; at < bytes.size(); at += piece)
        body.append(QByteArrayView(bytes).sliced(at, std::min(piece, bytes.size() - at)));
}

// Where temporary files are made, for the time of a test.
class TemporaryPlace
{
public:
    explicit TemporaryPlace(const QString &folder) { qputenv("TMPDIR", folder.toUtf8()); }
    ~TemporaryPlace() { m_before.isNull() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", m_before); }
    TemporaryPlace(const TemporaryPlace &) = delete;
    TemporaryPlace &operator=(const TemporaryPlace &) = delete;

private:
    QByteArray m_before = qgetenv("TMPDIR");
};

} // namespace

TEST(ReceivedBody, isEmptyAtFirst)
{
    const ReceivedBody body;
    EXPECT_TRUE(body.isEmpty());
    EXPECT_EQ(body.bytes(), QByteArray());
}

TEST(ReceivedBody, keepsWhatHasCome)
{
    for (const qsizetype size : {qsizetype(1), ReceivedBody::LongestInMemory, Long}) {
        const QByteArray bytes = sample(size);
        ReceivedBody body;
        append(body, bytes, 70000);
        EXPECT_EQ(body.size(), size);
        EXPECT_TRUE(body.bytes() == bytes) << size;
    }
}

TEST(ReceivedBody, takesPiecesOfAnyLength)
{
    const QByteArray bytes = sample(Long);
    ReceivedBody body;
    body.append(bytes);
    body.append("end");
    EXPECT_TRUE(body.bytes() == bytes + "end");
}

TEST(ReceivedBody, goesOnAfterItHasBeenRead)
{
    const QByteArray bytes = sample(Long);
    ReceivedBody body;
    append(body, bytes, 70000);
    EXPECT_TRUE(body.bytes() == bytes);
    append(body, bytes, 70000);
    EXPECT_TRUE(body.bytes() == bytes + bytes);
}

TEST(ReceivedBody, beginsAnew)
{
    ReceivedBody body;
    append(body, sample(Long), 70000);
    body.clear();
    EXPECT_TRUE(body.isEmpty());
    body.append("new");
    EXPECT_EQ(body.bytes(), "new");
}

TEST(ReceivedBody, leavesNoFileBehind)
{
    const QTemporaryDir folder;
    {
        const TemporaryPlace place(folder.path());
        ReceivedBody body;
        append(body, sample(Long), 70000);
    }
    EXPECT_TRUE(QDir(folder.path()).isEmpty());
}

TEST(ReceivedBody, staysInMemoryWhereNoFileCanBeMade)
{
    const TemporaryPlace place(u"/nowhere/at/all"_s);
    const QByteArray bytes = sample(Long);
    ReceivedBody body;
    append(body, bytes, 70000);
    EXPECT_TRUE(body.bytes() == bytes);
}
