"""Makes the Debian packages, unpacks them, and looks at what is in them."""
import gzip
import os
import pathlib
import re
import stat
import sys
import tempfile

from playing import HERE, WITH_DISPLAY, expect, run

sys.path.insert(0, str(HERE.parent / "console"))
from console import Service, entry  # noqa: E402

# What each has to depend on, and what it must not.
TOOLKIT = ["libgtk-4-1", "libwebkitgtk-6.0-4"]
NAMES = {
    "libzovkpopup1": (["zovkpopup-helper (= ", "libcurl4 (>= ", "libsqlite3-0"], TOOLKIT),
    "zovkpopup-helper": (TOOLKIT, ["libzovkpopup1"]),
    "zovkpopup-tool": (["libxml2", "libc6"], TOOLKIT + ["zovkpopup-helper", "libzovkpopup1"]),
    "zovkpopup-service": (["libcpp-httplib", "libsqlite3-0"], TOOLKIT + ["zovkpopup-helper"]),
    "libzovkpopup-dev": (["libzovkpopup1 (= "], TOOLKIT + ["zovkpopup-tool"]),
    "zovkpopup-doc": ([], ["lib"]),
}
WITH_SYMBOLS = [name for name in NAMES if name not in ("libzovkpopup-dev", "zovkpopup-doc")]
PROGRAMS = ["lib/*/libzovkpopup.so.1.*", "lib/*/zovkpopup/zovkpopup-helper",
            "lib/*/zovkpopup-tool/zovkpopup", "bin/zovkpopup-service"]


def made(build):
    """Returns the packages in a build folder: those that are installed, and those of debug
    symbols."""
    folder = build / "packages"
    return sorted(folder.glob("*.deb")), sorted(folder.glob("*.ddeb"))


def make_and_unpack(build, root):
    for old in [file for kind in made(build) for file in kind]:
        old.unlink()
    run("cmake", "--build", build, "--target", "package")
    packages, symbols = made(build)
    expect([file.name.split("_")[0] for file in packages] == sorted(NAMES), f"there are {packages}")
    expect([file.name.split("_")[0] for file in symbols]
           == sorted(f"{name}-dbgsym" for name in WITH_SYMBOLS), f"there are symbols in {symbols}")
    for package in packages:
        check_fields(package.name.split("_")[0], package)
        run("dpkg-deb", "-x", package, root)


def check_fields(name, package):
    depends = run("dpkg-deb", "-f", package, "Depends")
    wanted, unwanted = NAMES[name]
    for other in wanted:
        expect(other in depends, f"{name} does not depend on {other}: {depends}")
    for other in unwanted:
        expect(other not in depends, f"{name} depends on {other}: {depends}")
    expect("-dev" not in depends, f"{name} needs development packages: {depends}")
    if name == "libzovkpopup1":
        shlibs = run("dpkg-deb", "-I", package, "shlibs")
        expect(shlibs.startswith("libzovkpopup 1 libzovkpopup1"), f"wrong shlibs: {shlibs}")
    for line in run("dpkg-deb", "-c", package).splitlines():
        expect(" root/root " in line, f"{name} does not belong to root: {line}")


def check_lintian(build):
    """Checks that Debian's own checker finds nothing in any of them."""
    packages, symbols = made(build)
    expect(packages and symbols, "there are no packages")
    run("lintian", "--fail-on", "error,warning", *packages, *symbols)


def check_hardening(build):
    """Checks that every program and the library have the hardening of a release."""
    packages, _ = made(build)
    with tempfile.TemporaryDirectory() as root:
        for package in packages:
            run("dpkg-deb", "-x", package, root)
        for pattern in PROGRAMS:
            (program,) = pathlib.Path(root, "usr").glob(pattern)
            # The mark for control flow is there only where the C library has it, which Debian's has
            # not, and a program without guarded stacks only counts as unknown. The instructions of
            # both can be counted; the C library's own start has a few landing pads.
            run("hardening-check", "--nocfprotection", program)
            code = run("objdump", "-d", program)
            expect(code.count("endbr64") > 100, f"{program} has no landing pads")
            expect(re.search(r"or[lq]? +\$0x0,\(%rsp\)", code), f"{program} has no guarded stacks")


def check_files(prefix):
    """Programs and libraries are stripped and look for libraries nowhere else; nothing is writable
    by others."""
    programs = 0
    for path in prefix.rglob("*"):
        if path.is_symlink():
            expect(path.exists(), f"{path} leads nowhere")
            continue
        mode = stat.S_IMODE(path.stat().st_mode)
        executable = path.is_dir() or is_script(path) or is_program(path) and ".so" not in path.name
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
        expect(said.rstrip().endswith(licence.rstrip()), f"{name} does not say what LICENSE says")


def is_script(path):
    """Returns whether the file is a script, such as those of the examples."""
    with open(path, "rb") as file:
        return file.read(2) == b"#!"


def is_program(path):
    with open(path, "rb") as file:
        return file.read(4) == b"\x7fELF"


def check_service(prefix):
    """Checks that the service finds the helper, which alone can parse a page's script."""
    service = Service(popups=[entry(1, "lobby")], program=str(prefix / "bin/zovkpopup-service"))
    try:
        service.write("pages/lobby.html", "<script>let lantern = ;</script>")
        expect(service.popup(1)["state"] == "broken", "the service does not parse scripts")
    finally:
        service.stop()


def check_tools(prefix, work):
    """Checks that the tool finds the helper, and that its manual can be read."""
    tool = prefix / "bin/zovkpopup"
    env = dict(os.environ, TMPDIR=str(work))
    printed = run(WITH_DISPLAY, "1280x900", "timeout", "60", tool, "preview", HERE / "page.html",
                  env=env)
    expect('0 skip {"action":"skip","msg":"installed"}' in printed, f"the tool printed {printed}")
    expect("zovkpopup" in run(prefix / "bin/zovkpopup-service", "--version"), "the service is mute")
    check_service(prefix)
    share = prefix / "share"
    for program in ("zovkpopup", "zovkpopup-service"):
        manual = gzip.decompress((share / f"man/man1/{program}.1.gz").read_bytes()).decode()
        expect(re.search(r"^\.Dd ", manual, re.M), f"{program} has no manual page")
        run("bash", "-n", share / "bash-completion/completions" / program)
        run("zsh", "-n", share / "zsh/vendor-completions" / f"_{program}")
        run("fish", "-n", share / "fish/vendor_completions.d" / f"{program}.fish")
