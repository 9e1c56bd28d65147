"""Makes the Debian packages, unpacks them, and looks at what is in them."""
import gzip
import os
import re
import stat

from playing import HERE, WITH_DISPLAY, expect, run

NAMES = ["libzovkpopup1", "libzovkpopup-dev"]


def make_and_unpack(build, root):
    folder = build / "packages"
    for old in folder.glob("*.deb"):
        old.unlink()
    run("cmake", "--build", build, "--target", "package")
    files = {name: list(folder.glob(f"{name}_*.deb")) for name in NAMES}
    for name, found in files.items():
        expect(len(found) == 1, f"there is no package {name}, or several")
        check_fields(name, found[0])
        run("dpkg-deb", "-x", found[0], root)
    expect(len(list(folder.glob("*.deb"))) == len(NAMES), "there are other packages")


def check_fields(name, package):
    depends = run("dpkg-deb", "-f", package, "Depends")
    expected = {"libzovkpopup1": ["libwebkitgtk-6.0-4", "libgtk-4-1", "libcurl4 (>= ",
                                  "libsqlite3-0"],
                "libzovkpopup-dev": ["libzovkpopup1 (= ", "libc6"]}[name]
    for wanted in expected:
        expect(wanted in depends, f"{name} does not depend on {wanted}: {depends}")
    if name == "libzovkpopup1":
        expect("dev" not in depends, f"{name} needs development packages: {depends}")
        shlibs = run("dpkg-deb", "-I", package, "shlibs")
        expect(shlibs.startswith("libzovkpopup 1 libzovkpopup1"), f"wrong shlibs: {shlibs}")
    for line in run("dpkg-deb", "-c", package).splitlines():
        expect(" root/root " in line, f"{name} does not belong to root: {line}")


def check_files(prefix):
    """Programs and libraries are stripped and look for libraries nowhere else; nothing is writable
    by others."""
    programs = 0
    for path in prefix.rglob("*"):
        if path.is_symlink():
            expect(path.exists(), f"{path} leads nowhere")
            continue
        mode = stat.S_IMODE(path.stat().st_mode)
        executable = path.is_dir() or is_program(path) and ".so" not in path.name
        expect(mode == (0o755 if executable else 0o644), f"{path} has mode {mode:o}")
        if path.is_file() and is_program(path):
            programs += 1
            read = run("readelf", "-W", "-d", "-S", path)
            expect("RPATH" not in read and "RUNPATH" not in read, f"{path} has an rpath")
            expect(".symtab" not in read and ".debug_" not in read, f"{path} is not stripped")
    expect(programs == 4, f"there are {programs} programs and libraries")
    licence = (HERE.parents[1] / "LICENSE").read_text(encoding="utf-8")
    for name in NAMES:
        said = (prefix / "share/doc" / name / "copyright").read_text(encoding="utf-8")
        expect(said == licence, f"{name} does not say what LICENSE says")


def is_program(path):
    with open(path, "rb") as file:
        return file.read(4) == b"\x7fELF"


def check_tools(prefix, work):
    """The tool finds the helper, and its manual can be read."""
    tool = prefix / "bin/zovkpopup"
    env = dict(os.environ, TMPDIR=str(work))
    printed = run(WITH_DISPLAY, "1280x900", "timeout", "60", tool, "preview", HERE / "page.html",
                  env=env)
    expect('0 skip {"action":"skip","msg":"installed"}' in printed, f"the tool printed {printed}")
    manual = gzip.decompress((prefix / "share/man/man1/zovkpopup.1.gz").read_bytes()).decode()
    expect(re.search(r"^\.T[Hh] ", manual, re.M) or ".Dd" in manual, "this is no manual page")
    expect("zovkpopup" in run(prefix / "bin/zovkpopup-service", "--help"), "the service is mute")
    completions = prefix / "share/bash-completion/completions/zovkpopup"
    run("bash", "-n", completions)
