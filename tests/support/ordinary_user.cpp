#include "tests/support/ordinary_user.h"

#include <QDirIterator>
#include <QFile>

#include <sys/wait.h>
#include <unistd.h>

#include <stdexcept>

namespace sondrel {

namespace {

constexpr uid_t Nobody = 65534;

void giveAway(const QString &path)
{
    if (::lchown(QFile::encodeName(path).constData(), Nobody, Nobody) != 0)
        throw std::runtime_error("cannot give a test folder away");
}

void giveAllAway(const QString &folder)
{
    giveAway(folder);
    QDirIterator it(folder, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                    QDirIterator::Subdirectories);
    while (it.hasNext())
        giveAway(it.next());
}

[[noreturn]] void runAs(bool root, const std::function<bool()> &step)
{
    bool done = false;
    if (!root || (::setgid(Nobody) == 0 && ::setuid(Nobody) == 0)) {
        try {
            done = step();
        } catch (...) {
            done = false;
        }
    }
    ::_exit(done ? 0 : 1);
}

} // namespace

bool asOrdinaryUser(const QString &folder, const std::function<bool()> &step)
{
    const bool root = ::geteuid() == 0;
    if (root)
        giveAllAway(folder);
    const pid_t child = ::fork();
    if (child < 0)
        throw std::runtime_error("cannot start a process");
    if (child == 0)
        runAs(root, step);
    int status = 0;
    if (::waitpid(child, &status, 0) != child)
        throw std::runtime_error("cannot wait for a process");
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

} // namespace sondrel
