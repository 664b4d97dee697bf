#!/usr/bin/env python3
"""Compiles and runs the programs that the documents show.

  programs.py TREE LIBRARY COMPILER

Whole programs of Markdown are those of examples/, which the test host.install builds and runs; parts
of programs are compiled here within one that is whole. What is written in Python runs here, too.
"""

import os
import pathlib
import re
import subprocess
import sys
import tempfile
import types

import sources

REPLY = "<get_general_status><printer_state>idle</printer_state><alarms>0x1A</alarms></get_general_status>"

# What the parts take for granted.
AROUND = """
#include <iostream>
#include <kovra.hpp>
#include <string>

int complain(std::string const& why) {{ std::cout << why << '\\n'; return 1; }}
void show(unsigned long alarms) {{ std::cout << "alarms " << alarms << '\\n'; }}
void log(int line, std::string const& message) {{ std::cout << line << message << '\\n'; }}

int run(std::string const& text) {{
{part}
  return 0;
}}

int main(int, char** arguments) {{ return run(arguments[1]); }}
"""


class Programs:
    def __init__(self, tree, library, compiler, folder):
        self.tree = tree
        self.library = library
        self.compiler = compiler
        self.folder = folder
        self.checks = 0
        self.problems = []
        self.examples = [path.read_text(encoding="utf-8") for path in (tree / "examples").glob("*.c*")]

    def expect(self, holds, *said):
        self.checks += 1
        if not holds:
            self.problems.append(" ".join(map(str, said)))

    def environment(self):
        return os.environ | {"LD_LIBRARY_PATH": str(self.library.parent)}

    def ran(self, place, program, *arguments, given=""):
        """The output of a program in C++, or nothing where it does not compile."""
        source, binary = self.folder / "program.cpp", self.folder / "program"
        source.write_text(program, encoding="utf-8")
        compiled = subprocess.run(
            [self.compiler, "-std=c++17", "-Wall", "-Wextra", "-Wpedantic", "-Werror",
             f"-I{self.tree / 'include'}", source, "-o", binary, self.library], stderr=subprocess.PIPE, text=True,
            check=False)
        self.expect(compiled.returncode == 0, place, "does not compile:", compiled.stderr)
        if compiled.returncode != 0:
            return ""
        return subprocess.run([binary, *arguments], input=given, stdout=subprocess.PIPE, text=True, check=False,
                              stderr=subprocess.STDOUT, env=self.environment()).stdout

    def cpp(self, block):
        if "int main(" in block.text:
            self.expect(any(example.endswith(block.text + "\n") for example in self.examples), block.place,
                        "is none of examples/")
            return
        said = self.ran(block.place, AROUND.format(part=block.text), REPLY)
        self.expect(said == "alarms 26\n", block.place, "says", said)
        refused = self.ran(block.place, AROUND.format(part=block.text), "")
        self.expect(refused.startswith("found an empty text"), block.place, "says", refused)

    def python(self, block, given=""):
        said = subprocess.run(
            [sys.executable, "-B", "-c", block.text + given], cwd=self.folder, text=True, check=False,
            stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
            env=self.environment() | {"KOVRA_LIBRARY": str(self.library),
                                      "PYTHONPATH": str(self.tree / "bindings/python")})
        self.expect(said.returncode == 0, block.place, "ended with", said.returncode, said.stdout)
        return said.stdout

    def cmake(self, block):
        lists = (self.tree / "examples/CMakeLists.txt").read_text(encoding="utf-8")
        for line in block.lines:
            pattern = re.escape(line).replace("host", r"\S+")
            self.expect(re.search(pattern, lists), block.place, "examples/ are not built so:", line)

    def markdown(self, name):
        text = (self.tree / name).read_text(encoding="utf-8")
        for block in sources.of_markdown(name, text):
            if block.language in ("cpp", "c"):
                self.cpp(block)
            elif block.language == "cmake" or block.text.startswith("find_package("):
                self.cmake(block)
            elif block.language == "python":
                self.python(block)
            elif block.text.startswith("def states("):
                part = types.SimpleNamespace(place=block.place, text=block.text.partition("\nclient.")[0])
                said = self.python(part, f"\nprint(states([{REPLY!r}] * 3))")
                self.expect(said == "Counter({'idle': 3})\n", block.place, "says", said)

    def manual(self):
        """The program of libkovra(3), and the lines that it gives to CMake."""
        blocks = sources.of_manual("libkovra.3", (self.tree / "docs/man/libkovra.3").read_text(encoding="utf-8"))
        programs = [block for block in blocks if "int main(" in block.text]
        self.expect(programs, "libkovra.3 has no program")
        for block in programs:
            self.expect(self.ran(block.place, block.text + "\n", given=REPLY) == "2\n", block.place, "says otherwise")
            refused = self.ran(block.place, block.text + "\n", given="")
            self.expect(refused.startswith("found an empty text"), block.place, "says", refused)

    def all(self):
        (self.folder / "reply.xml").write_text(
            (self.tree / "samples/config/full.xml").read_text(encoding="utf-8"), encoding="utf-8")
        for name in ["README.md", "SECURITY.md", "bindings/python/README.md",
                     *sorted(str(path.relative_to(self.tree)) for path in self.tree.glob("docs/*.md"))]:
            self.markdown(name)
        self.manual()


def main(tree, library, compiler):
    with tempfile.TemporaryDirectory() as folder:
        programs = Programs(pathlib.Path(tree).resolve(), pathlib.Path(library).resolve(), compiler,
                            pathlib.Path(folder))
        programs.all()
    for problem in programs.problems:
        print(problem, file=sys.stderr)
    print(f"{programs.checks} checks, {len(programs.problems)} problems")
    return 1 if programs.problems or not programs.checks else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
