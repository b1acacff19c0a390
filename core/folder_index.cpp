#include "core/folder_index.h"

#include "core/native_file.h"
#include "core/text_fold.h"

#include <QFile>

#include <dirent.h>

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <memory>

namespace sondrel {

namespace {

// File times move in ticks of up to 10 ms: two changes within one bear the same time.
constexpr qint64 Tick = 20'000'000;

qint64 systemTime()
{
    timespec now = {};
    clock_gettime(CLOCK_REALTIME, &now);
    return static_cast<qint64>(now.tv_sec) * 1'000'000'000 + now.tv_nsec;
}

} // namespace

qint64 folderTime(const QString &folder)
{
    const auto status = statusOf(folder);
    return status && S_ISDIR(status->st_mode) ? changeTime(*status) : -1;
}

std::size_t FolderIndex::FoldedHash::operator()(const QString &name) const noexcept
{
    std::size_t hash = 14695981039346656037U;
    for (const QChar unit : name)
        hash = (hash ^ foldCase(unit.unicode())) * 1099511628211U;
    return hash;
}

bool FolderIndex::FoldedEqual::operator()(const QString &left, const QString &right) const noexcept
{
    return equalsIgnoringCase(left, right);
}

void FolderIndex::read(const QString &folder, Names &names)
{
    names.spellings.clear();
    names.settled = names.changed == names.ownChange || std::abs(systemTime() - names.changed) > Tick;
    const std::unique_ptr<DIR, int (*)(DIR *)> stream(opendir(NativePath(folder).text()), closedir);
    if (!stream)
        return;
    while (const dirent *entry = readdir(stream.get())) {
        const QByteArray bytes(entry->d_name);
        const QString name = QFile::decodeName(bytes);
        if (bytes != "." && bytes != ".." && QFile::encodeName(name) == bytes)
            names.spellings.insert(name);
    }
}

std::optional<QString> FolderIndex::spelling(const QString &folder, qint64 changed, const QString &name)
{
    if (changed < 0) {
        m_folders.erase(folder);
        return std::nullopt;
    }
    Names &names = m_folders[folder];
    if (names.changed != changed || !names.settled) {
        names.changed = changed;
        read(folder, names);
    }
    const auto [begin, end] = names.spellings.equal_range(name);
    if (begin == end)
        return std::nullopt;
    return *std::min_element(begin, end);
}

FolderIndex::OwnChange::OwnChange(FolderIndex &index, const QString &folder, qint64 changed)
    : m_folder(folder)
{
    const auto names = index.m_folders.find(folder);
    if (names != index.m_folders.end() && names->second.changed == changed)
        m_names = &names->second;
}

void FolderIndex::OwnChange::added(const QString &name)
{
    if (!m_names)
        return;
    const auto [begin, end] = m_names->spellings.equal_range(name);
    if (std::find(begin, end, name) == end)
        m_names->spellings.insert(name);
    m_names->changed = m_names->ownChange = folderTime(m_folder);
}

void FolderIndex::OwnChange::removed(const QString &name)
{
    if (!m_names)
        return;
    const auto [begin, end] = m_names->spellings.equal_range(name);
    if (const auto spelled = std::find(begin, end, name); spelled != end)
        m_names->spellings.erase(spelled);
    m_names->changed = m_names->ownChange = folderTime(m_folder);
}

} // namespace sondrel
