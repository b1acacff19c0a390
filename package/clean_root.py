"""A clean Debian in a folder: what debootstrap makes, kept as an archive, and unpacked anew for each proof."""
import os
import re
import shutil
import subprocess
from pathlib import Path

RELEASE = "bookworm"
USER = "shopkeeper"
PATH = "/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin"


class RootFailed(Exception):
    pass


def do(*words, **options):
    """Runs a command and returns what it prints; raises RootFailed when it fails."""
    done = subprocess.run([str(word) for word in words], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, check=False, **options)
    text = done.stdout.decode(errors="replace")
    if done.returncode:
        raise RootFailed(f"{' '.join(map(str, words))}: status {done.returncode}\n{text[-4000:]}")
    return text


def sources():
    """Where this machine gets the release from: pairs of address and suite."""
    lines = do("apt-get", "indextargets", "--format", "$(REPO_URI) $(RELEASE) $(COMPONENT)",
               "Created-By: Packages").splitlines()
    found = []
    for line in lines:
        address, suite, component = line.split()
        if component == "main" and suite.startswith(RELEASE) and (address, suite) not in found:
            found.append((address, suite))
    if not any(suite == RELEASE for _, suite in found):
        raise RootFailed(f"this machine's sources of packages have no Debian {RELEASE}")
    return found


def apt_settings():
    """How this machine reaches them: proxies, and what it does not check."""
    wanted = re.compile(r"Acquire::(https?|Check|ForceIPv)", re.IGNORECASE)
    return "".join(line + "\n" for line in do("apt-config", "dump").splitlines() if wanted.match(line))


class CleanRoot:
    """Use as a context, in mounts of one's own; the folder keeps the archive and the packages that were fetched."""

    def __init__(self, folder):
        self._folder = Path(folder).resolve()
        self.path = self._folder / "root"
        self._archive = self._folder / f"{RELEASE}.tar"
        self._packages = self._folder / "packages"
        self._mounts = []

    def __enter__(self):
        self._folder.mkdir(parents=True, exist_ok=True)
        self._packages.mkdir(exist_ok=True)
        if not self._archive.exists():
            self._make_archive()
        self._remove()
        self.path.mkdir()
        do("tar", "--numeric-owner", "-xpf", self._archive, "-C", self.path)
        try:
            self._mount()
            self._prepare()
        except BaseException:
            self._unmount()
            raise
        return self

    def __exit__(self, *_):
        self._unmount()

    def _remove(self):
        if self.path.exists():
            # Not a file of the machine itself, should something of it still be mounted there.
            do("rm", "-rf", "--one-file-system", self.path)

    def _make_archive(self):
        fresh = self._folder / "fresh"
        shutil.rmtree(fresh, ignore_errors=True)
        mirror = next(address for address, suite in sources() if suite == RELEASE)
        print(f"Making a clean Debian {RELEASE} ...", flush=True)
        do("debootstrap", "--variant=minbase", RELEASE, fresh, mirror)
        part = self._archive.with_suffix(".part")
        do("tar", "--numeric-owner", "--one-file-system", "-cf", part, "-C", fresh, ".")
        part.rename(self._archive)
        do("rm", "-rf", "--one-file-system", fresh)

    def _mount(self):
        places = [("/dev", "dev"), (self._packages, "var/cache/apt/archives")]
        sockets = Path("/tmp/.X11-unix")
        if sockets.is_dir():
            (self.path / "tmp/.X11-unix").mkdir(mode=0o1777)
            places.append((sockets, "tmp/.X11-unix"))
        for source, place in places:
            self._mount_one("--rbind" if source == "/dev" else "--bind", source, place)
        self._mount_one("-tproc", "proc", "proc")

    def _mount_one(self, how, source, place):
        do("mount", how, source, self.path / place)
        self._mounts.append(self.path / place)

    def _unmount(self):
        for place in reversed(self._mounts):
            do("umount", "--recursive", "--lazy", place)
        self._mounts = []

    def _prepare(self):
        etc = self.path / "etc"
        (self._packages / "partial").mkdir(exist_ok=True)
        (etc / "apt/sources.list").write_text(
            "".join(f"deb {address} {suite} main\n" for address, suite in sources()), encoding="utf-8")
        (etc / "apt/apt.conf.d/90machine").write_text(apt_settings(), encoding="utf-8")
        for name in ("resolv.conf", "hosts"):
            shutil.copy(Path("/etc", name), etc / name)
        # No service is to start.
        policy = self.path / "usr/sbin/policy-rc.d"
        policy.write_text("#!/bin/sh\nexit 101\n", encoding="ascii")
        policy.chmod(0o755)
        self.run("useradd", "--create-home", "--shell", "/bin/sh", USER)
        self.run("apt-get", "--quiet", "update")

    @property
    def home(self):
        return self.path / "home" / USER

    def command(self, *words, user=None, **environment):
        """The words of a command that runs in here."""
        settings = dict(PATH=PATH, HOME=f"/home/{user}" if user else "/root", LANG="C.UTF-8",
                        DEBIAN_FRONTEND="noninteractive", **environment)
        as_user = ["setpriv", f"--reuid={user}", f"--regid={user}", "--init-groups"] if user else []
        return ["chroot", str(self.path), "env", "-i", *(f"{name}={value}" for name, value in settings.items()),
                *as_user, *map(str, words)]

    def run(self, *words, user=None):
        return do(*self.command(*words, user=user))

    def install(self, package):
        """Installs a package file with what it needs, and nothing that it only recommends."""
        place = self.path / "var/tmp" / Path(package).name
        shutil.copy(package, place)
        self.run("apt-get", "--quiet", "--yes", "--no-install-recommends", "install", f"/var/tmp/{place.name}")
        place.unlink()
        os.sync()
