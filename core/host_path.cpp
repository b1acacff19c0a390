#include "core/host_path.h"

#include "core/failure.h"
#include "core/native_file.h"
#include "core/text_fold.h"

#include <QDir>
#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <system_error>
#include <tuple>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace sondrel {

namespace {

constexpr qsizetype LongestName = 255; // bytes, the limit of Linux file systems
constexpr auto ThisFolder = "."_L1;

[[noreturn]] void fail(const QString &what, const QString &path, const QString &why)
{
    throw Failure(what + u" \""_s + path + u"\": "_s + why);
}

[[noreturn]] void failWithSystemError(const QString &what, const QString &path)
{
    fail(what, path, QString::fromStdString(std::generic_category().message(errno)));
}

} // namespace

AppendFile::AppendFile(const HostPath &files, const QString &path, int flags)
    : m_files(&files), m_path(path), m_file(path, flags)
{
    if (!m_file.isOpen())
        m_files->failToChange(u"Cannot write"_s, path);
}

void AppendFile::append(QByteArrayView bytes)
{
    const qsizetype done = m_file.write(bytes);
    if (done == bytes.size())
        return;
    const int error = errno;
    struct stat info = {};
    // Where this fails too the half stays: the write is reported anyway.
    if (done > 0 && ::fstat(m_file.descriptor(), &info) == 0)
        std::ignore = ::ftruncate(m_file.descriptor(), info.st_size - done);
    errno = error;
    m_files->failToChange(u"Cannot write"_s, m_path);
}

struct HostPath::Place
{
    QString root; // empty for a path outside the roots
    QStringList names;

    QString asSpelled() const { return root + u'/' + names.join(u'/'); }
};

struct HostPath::Entry
{
    Directory folder;
    QString name;
    mode_t mode = 0;     // 0 when it is not there
    qint64 changed = -1; // its time; -1 when that is not known

    QString path() const { return folder.path + u'/' + name; }
    Directory asFolder() const { return {path(), changed}; }
    bool isThere() const { return mode != 0; }
    bool isFile() const { return S_ISREG(mode); }
    bool isFolder() const { return S_ISDIR(mode); }
    bool isLink() const { return S_ISLNK(mode); }
    static Entry of(const QString &native)
    {
        const qsizetype cut = native.lastIndexOf(u'/');
        return at({cut < 0 ? u"."_s : native.first(cut), -1}, native.sliced(cut + 1));
    }
    static Entry at(const Directory &folder, const QString &name)
    {
        Entry result{folder, name};
        if (const auto status = linkStatusOf(result.path())) {
            result.mode = status->st_mode;
            result.changed = changeTime(*status);
        }
        return result;
    }
    QString kind() const { return isFolder() ? u"it is a folder"_s : u"it is not a file"_s; }
};

HostPath::HostPath(QStringList roots) : m_roots(std::move(roots))
{
    // The longest root first, should one lie inside another.
    std::sort(m_roots.begin(), m_roots.end(),
              [](const QString &left, const QString &right) { return left.size() > right.size(); });
}

bool HostPath::isFileName(const QString &name)
{
    return !name.contains(u'\\') && isLinkName(name);
}

// What the file system takes; a "\" parts folders in our paths alone.
bool HostPath::isLinkName(const QString &name)
{
    if (name.isEmpty() || name == "."_L1 || name == ".."_L1)
        return false;
    for (const QChar unit : name) {
        if (unit == u'/' || unit < u' ' || unit == QChar(0x7F))
            return false;
    }
    // A unit has at most three bytes.
    return name.size() <= LongestName / 3 || QFile::encodeName(name).size() <= LongestName;
}

const QString &HostPath::checkedName(const QString &name)
{
    if (!isFileName(name))
        throw Failure(u"\""_s + name + u"\" cannot be the name of a file"_s);
    return name;
}

QString HostPath::compose(const QString &root, std::initializer_list<QString> components)
{
    QString path = root;
    for (const QString &component : components) {
        path += u'\\';
        path += checkedName(component);
    }
    return path;
}

// Nothing when a component cannot be a file name.
std::optional<HostPath::Place> HostPath::divide(const QString &path) const
{
    for (const QString &root : m_roots) {
        if (path.size() <= root.size() || path[root.size()] != u'\\' || !path.startsWith(root))
            continue;
        Place place{root, {}};
        for (const QStringView name :
             QStringView(path).sliced(root.size() + 1).split(u'\\', Qt::SkipEmptyParts)) {
            place.names.append(name.toString());
            if (!isFileName(place.names.constLast()))
                return std::nullopt;
        }
        return place;
    }
    if (path.isEmpty() || path.contains(QChar(u'\0')))
        return std::nullopt;
    return Place{};
}

HostPath::Entry HostPath::entry(const Directory &folder, const QString &name) const
{
    Entry result = Entry::at(folder, name);
    if (result.isThere())
        return result;
    result.folder = known(folder);
    const auto spelling = m_index.spelling(folder.path, result.folder.changed, name);
    return spelling ? Entry::at(result.folder, *spelling) : result;
}

HostPath::Directory HostPath::known(Directory folder)
{
    if (folder.changed < 0)
        folder.changed = folderTime(folder.path);
    return folder;
}

FolderIndex::OwnChange HostPath::ownChange(const Directory &folder)
{
    return {m_index, folder.path, known(folder).changed};
}

// The path of a place that does not exist as spelled, or not at all.
QString HostPath::respelled(const Place &place) const
{
    Directory result{place.root};
    for (const QString &name : place.names) {
        const Entry next = entry(result, name);
        // A folder has one index, by whichever of its spellings it is reached.
        const Entry beside = next.isLink() ? sibling(next) : next;
        result = beside.isFolder() ? beside.asFolder() : Directory{next.path()};
    }
    return result.path;
}

std::optional<QString> HostPath::find(const QString &path) const
{
    const auto place = divide(path);
    if (!place)
        return std::nullopt;
    if (place->root.isEmpty())
        return path;
    QString spelled = place->asSpelled();
    return modeOf(spelled) != 0 ? spelled : respelled(*place);
}

// What stands at the path, links followed.
std::optional<struct stat> HostPath::status(const QString &path) const
{
    const auto place = divide(path);
    if (!place)
        return std::nullopt;
    if (place->root.isEmpty())
        return statusOf(path);
    const auto spelled = statusOf(place->asSpelled());
    return spelled ? spelled : statusOf(respelled(*place));
}

bool HostPath::isInside(const QString &canonical) const
{
    return std::any_of(m_roots.begin(), m_roots.end(), [&](const QString &root) {
        const auto canonicalRoot = canonicalPath(root);
        return canonicalRoot && canonical.startsWith(*canonicalRoot + u'/');
    });
}

QString HostPath::linkText(const Entry &link)
{
    std::array<char, PATH_MAX> text;
    const auto length = ::readlink(NativePath(link.path()).text(), text.data(), text.size());
    return QFile::decodeName(QByteArray(text.data(), std::max<qsizetype>(length, 0)));
}

// The file that a link of the program's own stands for; without a name when the link is of another kind.
HostPath::Entry HostPath::sibling(const Entry &link)
{
    const QString name = linkText(link);
    if (!isFileName(name))
        return {};
    Entry result = Entry::at(link.folder, name);
    return result.isLink() ? Entry{} : result;
}

// What a link of any kind stands for, when that lies below a root.
HostPath::Entry HostPath::followed(const Entry &link) const
{
    const auto target = canonicalPath(link.path());
    if (!target)
        failWithSystemError(u"Cannot follow the link"_s, link.path());
    if (!isInside(*target))
        fail(u"Cannot write through the link"_s, link.path(), u"it leads out of the program's folders"_s);
    return Entry::of(*target);
}

// A folder to write in, or to be made.
HostPath::Entry HostPath::folderEntry(const Directory &folder, const QString &name) const
{
    Entry result = entry(folder, name);
    if (!result.isLink())
        return result;
    Entry beside = sibling(result);
    return beside.name.isEmpty() ? followed(result) : beside;
}

// The name to change under a path. It is a link only where the link itself is meant: a second spelling stands
// for its file, the name that a browser makes of another file's does not.
HostPath::Entry HostPath::target(const QString &path) const
{
    const auto place = divide(path);
    if (!place)
        fail(u"Cannot write"_s, path, u"it cannot be the name of a file"_s);
    if (place->root.isEmpty()) // picked by the user: links lead where they lead
        return Entry::of(canonicalPath(path).value_or(path));
    if (place->names.isEmpty())
        fail(u"Cannot write"_s, path, u"it is a folder"_s);
    Directory folder{place->root};
    for (qsizetype i = 0; i < place->names.size() - 1; ++i)
        folder = folderEntry(folder, place->names[i]).asFolder();
    return targetIn(folder, place->names.constLast());
}

HostPath::Entry HostPath::targetIn(const Directory &folder, const QString &name) const
{
    Entry result = entry(folder, name);
    if (!result.isLink())
        return result;
    Entry beside = sibling(result);
    return equalsIgnoringCase(beside.name, result.name) ? beside : result;
}

// The target, for bytes: a link that somebody else made is followed.
HostPath::Entry HostPath::fileToWrite(Entry target) const
{
    if (target.isLink() && sibling(target).name.isEmpty())
        target = followed(target);
    if (target.isThere() && !target.isFile() && !target.isLink())
        fail(u"Cannot write"_s, target.path(), target.kind());
    return target;
}

bool HostPath::fileExists(const QString &path) const
{
    const auto found = status(path);
    return found && S_ISREG(found->st_mode);
}

bool HostPath::folderExists(const QString &path) const
{
    const auto found = status(path);
    return found && S_ISDIR(found->st_mode);
}

qint64 HostPath::size(const QString &path) const
{
    const auto found = status(path);
    return found && S_ISREG(found->st_mode) ? found->st_size : -1;
}

QByteArray HostPath::readAll(const QString &path) const
{
    const QString what = u"Cannot read"_s;
    const auto native = find(path);
    if (!native)
        fail(what, path, u"it cannot be the name of a file"_s);
    // Not blocking, should a pipe stand in the file's place.
    const NativeFile file(*native, O_RDONLY | O_NONBLOCK);
    struct stat info = {};
    if (!file.isOpen() || ::fstat(file.descriptor(), &info) != 0)
        failWithSystemError(what, *native);
    if (!S_ISREG(info.st_mode))
        fail(what, *native, Entry{{}, {}, info.st_mode}.kind());
    auto bytes = file.readAll();
    if (!bytes)
        failWithSystemError(what, *native);
    return *std::move(bytes);
}

void HostPath::failToChange(const QString &what, const QString &path) const
{
    try {
        failWithSystemError(what, path);
    } catch (const Failure &failure) {
        const bool isBelow = std::any_of(m_roots.begin(), m_roots.end(), [&](const QString &root) {
            return path == root || path.startsWith(root + u'/');
        });
        if (onUnwritten && (isBelow || isInside(path)))
            onUnwritten(failure.text());
        throw;
    }
}

void HostPath::replace(Entry &file, QByteArrayView bytes, QByteArrayView tail, bool flush)
{
    const QString what = u"Cannot write"_s;
    // The folder's permission alone decides over a rename; a file that is not to be written stays.
    if (file.isFile() && ::access(NativePath(file.path()).text(), W_OK) != 0)
        failToChange(what, file.path());
    FolderIndex::OwnChange change = ownChange(file.folder);
    TemporaryFile copy(file.folder.path);
    if (!copy.isOpen() || !copy.file().writeAll(bytes, tail) ||
        (file.isFile() && ::fchmod(copy.file().descriptor(), file.mode & 07777) != 0) ||
        (flush && ::fsync(copy.file().descriptor()) != 0) || !copy.moveTo(file.path()))
        failToChange(what, file.path());
    change.added(file.name);
    file.folder.changed = change.changed();
}

AppendFile HostPath::openToAppend(Entry &file)
{
    if (file.isFile())
        return AppendFile(*this, file.path(), O_WRONLY | O_APPEND);
    FolderIndex::OwnChange change = ownChange(file.folder);
    if (file.isLink() && ::unlink(NativePath(file.path()).text()) != 0)
        failToChange(u"Cannot write"_s, file.path());
    AppendFile result(*this, file.path(), O_WRONLY | O_APPEND | O_CREAT);
    change.added(file.name);
    file.folder.changed = change.changed();
    return result;
}

void HostPath::remove(Entry &file)
{
    const QString what = u"Cannot remove"_s;
    if (!file.isThere())
        return;
    if (file.isFolder())
        fail(what, file.path(), file.kind());
    FolderIndex::OwnChange change = ownChange(file.folder);
    if (::unlink(NativePath(file.path()).text()) != 0)
        failToChange(what, file.path());
    change.removed(file.name);
    file.folder.changed = change.changed();
}

void HostPath::writeAll(const QString &path, QByteArrayView bytes)
{
    Entry file = fileToWrite(target(path));
    replace(file, bytes, {}, true);
}

void HostPath::writeUnflushed(const QString &path, QByteArrayView bytes)
{
    Entry file = fileToWrite(target(path));
    replace(file, bytes, {}, false);
}

AppendFile HostPath::openToAppend(const QString &path)
{
    Entry file = fileToWrite(target(path));
    return openToAppend(file);
}

void HostPath::remove(const QString &path)
{
    Entry file = target(path);
    remove(file);
}

HostPath::Entry HostPath::Folder::target(const QString &name) const
{
    return m_files.targetIn(m_place, checkedName(name));
}

// What follows a link can have gone to another folder.
void HostPath::Folder::keepTime(const Entry &written)
{
    if (written.folder.path == m_place.path)
        m_place.changed = written.folder.changed;
}

void HostPath::Folder::writeUnflushed(const QString &name, QByteArrayView bytes, QByteArrayView tail)
{
    Entry file = m_files.fileToWrite(target(name));
    m_files.replace(file, bytes, tail, false);
    keepTime(file);
}

AppendFile HostPath::Folder::openToAppend(const QString &name)
{
    Entry file = m_files.fileToWrite(target(name));
    AppendFile result = m_files.openToAppend(file);
    keepTime(file);
    return result;
}

AppendFile HostPath::Folder::openAnew(const QString &name)
{
    Entry file = target(name);
    m_files.remove(file);
    file.name = name;
    file.mode = 0;
    AppendFile result = m_files.openToAppend(file);
    keepTime(file);
    return result;
}

HostPath::Directory HostPath::madeFolder(const QString &path)
{
    const QString what = u"Cannot make the folder"_s;
    const auto place = divide(path);
    if (!place)
        fail(what, path, u"it cannot be the name of a file"_s);
    Directory folder{place->root.isEmpty() ? path : place->root};
    if (place->names.isEmpty() && !QDir().mkpath(folder.path))
        failToChange(what, folder.path);
    for (const QString &name : place->names) {
        const Entry next = folderEntry(folder, name);
        if (next.isThere() && !next.isFolder())
            fail(what, next.path(), u"a file is in its place"_s);
        if (!next.isThere()) {
            FolderIndex::OwnChange change = ownChange(next.folder);
            if (::mkdir(NativePath(next.path()).text(), 0777) != 0)
                failToChange(what, next.path());
            change.added(next.name);
        }
        folder = next.asFolder();
    }
    return folder;
}

HostPath::Folder HostPath::folder(const QString &path)
{
    if (auto known = knownFolder(path))
        return *std::move(known);
    Directory made = madeFolder(path);
    m_madeFolders[path] = made.path;
    return Folder(*this, std::move(made));
}

std::optional<HostPath::Folder> HostPath::knownFolder(const QString &path)
{
    const auto known = m_madeFolders.find(path);
    if (known == m_madeFolders.end())
        return std::nullopt;
    const auto status = linkStatusOf(known->second);
    if (!status || !S_ISDIR(status->st_mode))
        return std::nullopt;
    return Folder(*this, {known->second, changeTime(*status)});
}

void HostPath::makeFolder(const QString &path)
{
    if (!folderExists(path))
        folder(path);
}

void HostPath::linkBeside(const QString &target, const QString &linkName)
{
    link(target, linkName, false);
}

void HostPath::linkVaguely(const QString &target, const QString &linkName)
{
    link(target, linkName, true);
}

void HostPath::link(const QString &target, const QString &linkName, bool vaguely)
{
    if (!isLinkName(linkName))
        return;
    const Entry file = this->target(target);
    const Entry link = Entry::at(file.folder, linkName);
    if (linkName == file.name || (link.isThere() && !link.isLink()))
        return;
    QString text = file.name;
    if (link.isLink()) {
        const QString present = linkText(link);
        if (vaguely && present != text && (present == ThisFolder || sibling(link).isThere()))
            text = ThisFolder;
        if (present == text)
            return;
    }
    const QString what = u"Cannot make the link"_s;
    const NativePath native(link.path());
    FolderIndex::OwnChange change = ownChange(link.folder);
    if (link.isLink() && ::unlink(native.text()) != 0)
        failToChange(what, link.path());
    if (::symlink(NativePath(text).text(), native.text()) == 0)
        change.added(linkName);
    else if (errno != EPERM && errno != EOPNOTSUPP && errno != ENOSYS) // what file systems without links say
        failToChange(what, link.path());
}

} // namespace sondrel
