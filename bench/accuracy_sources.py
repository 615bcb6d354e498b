"""The sources that accuracy is measured on: Debian source packages, fetched with apt and not built."""
import glob
import json
import os
import shutil
import subprocess
import sys
import tarfile

GCC_HEADERS = sorted(glob.glob("/usr/lib/gcc/*/*/include"))[-1:]
OBJECTIVE_C = ["-xobjective-c", "-fobjc-runtime=gcc", "-fconstant-string-class=NSConstantString", "-fexceptions",
               "-fobjc-exceptions", "-DGNUSTEP", "-DGNUSTEP_BASE_LIBRARY=1", "-DGNU_GUI_LIBRARY=1", "-DGNU_RUNTIME=1",
               "-D_NATIVE_OBJC_EXCEPTIONS", "-I/usr/include/GNUstep"] + ["-I" + path for path in GCC_HEADERS]


class Package:
    """A source package. 'flags' are for clangd; "-I" paths in them are relative to the package's root. 'folders' are
    those whose sources clangd can compile without what a build would generate. 'made' are files that a build would
    make and sources include, with their content."""

    def __init__(self, name, language, flags, folders=(".",), made=None):
        self.name, self.language, self.flags, self.folders, self.made = name, language, flags, folders, made or {}


# The rules were developed with the first row, and are developed with the third. The second is only measured: nobody
# reads its failures.
SAMPLES = {
    "first": [
        Package("libzstd", "C", ["-xc", "-Ilib", "-Ilib/common", "-Ilib/legacy", "-Ilib/dictBuilder", "-Iprograms",
                                 "-DZSTD_LEGACY_SUPPORT=5", "-DXXH_NAMESPACE=ZSTD_"], ["lib", "programs"]),
        Package("jq", "C", ["-xc", "-std=gnu11", "-D_GNU_SOURCE", "-I.", "-Isrc", "-DIEEE_8087=1"], ["src"],
                {"src/version.h": '#define JQ_VERSION "1.6"\n', "src/builtin.inc": ""}),
        Package("leveldb", "C++", ["-xc++", "-std=c++17", "-I.", "-Iinclude", "-DLEVELDB_PLATFORM_POSIX=1"],
                ["db", "table", "util", "port", "include", "helpers"],
                {"port/port_config.h": ""}),
        Package("re2", "C++", ["-xc++", "-std=c++17", "-I."], ["re2", "util", "app"]),
        Package("tinyxml2", "C++", ["-xc++", "-std=c++17", "-I."]),
        Package("libjsoncpp", "C++", ["-xc++", "-std=c++17", "-Iinclude", "-Isrc/lib_json"],
                ["include", "src", "example"]),
        Package("projectcenter.app", "Objective-C",
                ["-I.", "-IFramework", "-IHeaders", "-IModules", "-IModules/Parsers/ProjectCenter", *OBJECTIVE_C]),
        Package("gnustep-base", "Objective-C", ["-IHeaders", "-ISource", "-IHeaders/Foundation", *OBJECTIVE_C],
                ["Source", "Headers", "Tools"], {"Source/config.h": ""}),
    ],
    "second": [
        Package("lua5.4", "C", ["-xc", "-DLUA_USE_LINUX=1", "-Isrc"], ["src"]),
        Package("libyaml", "C", ["-xc", "-Iinclude", "-Isrc", "-DYAML_VERSION_STRING=\"0\"", "-DYAML_VERSION_MAJOR=0",
                                 "-DYAML_VERSION_MINOR=0", "-DYAML_VERSION_PATCH=0"], ["include", "src"]),
        Package("fmtlib", "C++", ["-xc++", "-std=c++17", "-Iinclude"], ["include", "src"]),
        Package("yaml-cpp", "C++", ["-xc++", "-std=c++17", "-Iinclude", "-Isrc"], ["include", "src", "util"]),
        Package("price.app", "Objective-C", ["-I.", *OBJECTIVE_C]),
        Package("cynthiune.app", "Objective-C", ["-I.", "-IFrameworks", *OBJECTIVE_C]),
    ],
    "third": [
        Package("hiredis", "C", ["-xc", "-I."]),
        Package("mujs", "C", ["-xc", "-I."]),
        Package("pugixml", "C++", ["-xc++", "-std=c++17", "-Isrc"], ["src", "tests"]),
        Package("double-conversion", "C++", ["-xc++", "-std=c++17", "-I."], ["double-conversion", "test"]),
        Package("adun.app", "Objective-C", ["-IKernel", "-IKernel/AdunKernel/Headers", *OBJECTIVE_C],
                ["Kernel"]),
    ],
}

APT_SOURCES = """Types: deb-src
URIs: http://deb.debian.org/debian
Suites: bookworm
Components: main
Signed-By: /usr/share/keyrings/debian-archive-keyring.gpg
"""


def apt(cache, *words, directory):
    """Runs apt-get with its own list of sources below the cache: neither root nor the machine's own list is needed."""
    own = os.path.join(cache, "apt")
    os.makedirs(os.path.join(own, "lists/partial"), exist_ok=True)
    listed = os.path.join(own, "debian.sources")
    with open(listed, "w", encoding="utf-8") as out:
        out.write(APT_SOURCES)
    options = {"Dir::Etc::sourcelist": listed, "Dir::Etc::sourceparts": "/dev/null", "Dir::Cache": own,
               "Dir::State::lists": os.path.join(own, "lists"), "APT::Sandbox::User": "root"}
    command = ["apt-get", "-qq", *(word for key, value in options.items() for word in ("-o", f"{key}={value}")), *words]
    return subprocess.run(command, cwd=directory, check=False, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                          text=True)


def download(cache, package):
    """Returns the path of the package's original sources. Debian's own changes to them are not needed."""
    directory = os.path.join(cache, "downloads", package.name)
    os.makedirs(directory, exist_ok=True)

    def found():
        return sorted(path for path in glob.glob(os.path.join(directory, "*.orig.tar.*")) if not path.endswith(".asc"))

    if not found():
        if not glob.glob(os.path.join(cache, "apt/lists/*Sources*")):
            apt(cache, "update", directory=directory)
        said = apt(cache, "source", "--download-only", package.name, directory=directory).stdout
        if not found():
            sys.exit(f"{package.name} could not be fetched: {said}")
    return found()[0]


def unpack(cache, package):
    """Returns the root of the package's sources, with a compile_commands.json for clangd."""
    root = os.path.join(cache, "sources", package.name)
    if not os.path.exists(os.path.join(root, "compile_commands.json")):
        shutil.rmtree(root, ignore_errors=True)
        temporary = root + ".new"
        shutil.rmtree(temporary, ignore_errors=True)
        os.makedirs(temporary)
        with tarfile.open(download(cache, package)) as archive:
            archive.extractall(temporary, filter="data") if hasattr(tarfile, "data_filter") else \
                archive.extractall(temporary)
        inner = os.listdir(temporary)
        os.rename(os.path.join(temporary, inner[0]) if len(inner) == 1 else temporary, root)
        shutil.rmtree(temporary, ignore_errors=True)
        complete(root, package)
    return root


def complete(root, package):
    """Writes what a build would have made, and the compiler's flags."""
    for path, content in package.made.items():
        path = os.path.join(root, path)
        if not os.path.exists(path):
            with open(path, "w", encoding="utf-8") as out:
                out.write(content)
    compiled = [path for path in sources(root, package) if not path.endswith((".h", ".hh", ".hpp", ".inl"))]
    commands = [{"directory": root, "file": path, "arguments": ["clang", *package.flags, "-c", path]}
                for path in compiled]
    with open(os.path.join(root, "compile_commands.json"), "w", encoding="utf-8") as out:
        json.dump(commands, out, indent=1)


def sources(root, package):
    """Returns the relative paths of the package's sources that clangd can compile."""
    found = []
    for folder in package.folders:
        for directory, inner, files in os.walk(os.path.join(root, folder)):
            inner[:] = sorted(name for name in inner if not name.startswith("."))
            found += [os.path.relpath(os.path.join(directory, name), root) for name in files
                      if name.endswith((".c", ".cc", ".cpp", ".cxx", ".m", ".mm", ".h", ".hh", ".hpp", ".inl"))]
    return sorted(set(found))
