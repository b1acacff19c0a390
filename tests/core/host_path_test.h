// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/failure.h"
#include "core/host_path.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <functional>

#include <unistd.h>

namespace sondrel {

/// A folder that paths are looked up in, and one beside it.
class HostPathTest : public testing::Test
{
protected:
    QTemporaryDir folder;
    const QString root = folder.filePath(QStringLiteral("root"));
    const QString outside = folder.filePath(QStringLiteral("outside"));
    HostPath files{{root}};

    HostPathTest()
    {
        QDir().mkpath(root);
        QDir().mkpath(outside);
    }

    QString native(const QString &relative) const { return root + u'/' + relative; }
    QString composed(const QString &relative) const
    {
        return root + u'\\' + QString(relative).replace(u'/', u'\\');
    }

    // As somebody else would, past the index.
    void put(const QString &path, const QByteArray &bytes = "x") const
    {
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(bytes), bytes.size());
    }
    QByteArray bytesOf(const QString &path) const
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(cannot be read)");
    }
    void link(const QString &target, const QString &path) const
    {
        ASSERT_EQ(::symlink(QFile::encodeName(target).constData(), QFile::encodeName(path).constData()), 0);
    }
    QStringList names(const QString &path) const
    {
        return QDir(path).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                                    QDir::Name);
    }
    QString failureOf(const std::function<void()> &act) const
    {
        try {
            act();
        } catch (const Failure &failure) {
            return failure.text();
        }
        return QStringLiteral("(nothing thrown)");
    }
};

} // namespace sondrel
