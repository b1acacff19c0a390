#include "mail/message_stream.h"

#include "core/failure.h"
#include "tests/support/bad_files.h"

#include <gtest/gtest.h>

#include <utility>

using namespace Qt::Literals::StringLiterals;
using namespace sondrel;

namespace {

class StreamedFile : public testing::TestWithParam<qsizetype>
{
};

TEST_P(StreamedFile, comesInLinesOfBase64)
{
    const World world;
    const QByteArray bytes = randomBytes(GetParam());
    world.write(u"file"_s, bytes);
    MessageStream stream;
    stream.addFile(world.path(u"file"_s));
    const qint64 size = stream.size();
    const QByteArray text = stream.readAll();
    EXPECT_EQ(text.size(), size);
    EXPECT_EQ(QByteArray(text).replace("\r\n", ""), bytes.toBase64());
    for (const QByteArray &line : text.split('\n'))
        EXPECT_LE(line.size(), 77);
}

INSTANTIATE_TEST_SUITE_P(Sizes, StreamedFile,
                         testing::Values(0, 1, 2, 3, 56, 57, 58, 114, 58368, 58369, 200000));

TEST(MessageStream, isReadInPiecesOfAnySize)
{
    const World world;
    world.write(u"file"_s, "one");
    MessageStream stream;
    stream.add("head ");
    stream.add("");
    stream.addFile(world.path(u"file"_s));
    stream.add(" tail");
    QByteArray text;
    char byte = 0;
    while (stream.read(&byte, 1) == 1)
        text.append(byte);
    EXPECT_EQ(text, "head b25l\r\n tail");
}

TEST(MessageStream, holdsTheFileAsItWas)
{
    World world;
    world.write(u"file"_s, "first");
    MessageStream stream;
    stream.addFile(world.path(u"file"_s));
    world.app.files.writeAll(world.app.appFile({u"file"_s}), "another, longer");
    EXPECT_EQ(QByteArray::fromBase64(stream.readAll()), "first");
}

TEST(MessageStream, refusesAMissingFile)
{
    const World world;
    MessageStream stream;
    EXPECT_THROW(stream.addFile(world.path(u"none"_s)), Failure);
}

TEST(MessageStream, tellsOfAFileThatHasBecomeShorter)
{
    const World world;
    world.write(u"file"_s, "content");
    MessageStream stream;
    stream.addFile(world.path(u"file"_s));
    world.write(u"file"_s, "");
    EXPECT_THROW(stream.readAll(), Failure);
}

TEST(MessageStream, moves)
{
    MessageStream first;
    first.add("text");
    MessageStream second = std::move(first);
    EXPECT_EQ(second.readAll(), "text");
}

} // namespace
