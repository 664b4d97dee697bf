#!/usr/bin/env python3
"""Runs the commands that the documents, the manual and the helps show, and compares their output.

  commands.py TOOL TREE

Each document gets a folder of its own, with the files that it speaks of. What cannot run here is
told below, with what runs it instead, or with what is looked at in its place.
"""

import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

import sources

# No commands: the beginning of a block, and what it is.
NO_COMMANDS = {
    r"find_package\(": "CMake; as in examples/CMakeLists.txt, which host.install builds",
    r"(text|record|words) --->": "a drawing",
    r"inline constexpr|keyword<|reply\(|constexpr ": "rows of a recipe",
    r"module\(": "the configuration of rsyslog; see fleet.rsyslog",
    r"def states": "Python; see programs.py",
    r"kovra_general_status": "a metric; see fleet.prometheus",
    r"settings\.json:": "messages; see tool.documents",
}

# Run by other tests: a command, the file of the test, and what it runs there. Of one without a file
# nothing runs, for the reason that is told.
ELSEWHERE = [
    (r"g\+\+ ", "tests/host/install.sh", "pkg-config --cflags --libs kovra"),
    (r"find .*\| parallel|parallel ", "tests/fleet/parallel.sh", "parallel --pipepart -a stream"),
    (r"KOVRA_LIBRARY=.* unittest", "bindings/python/CMakeLists.txt", "-m unittest discover -t . -s tests"),
    (r"clang-tidy-14 |cppcheck ", "", "what it says is for people"),
    (r"(build/bench/bench/)?kovra_bench|build/bench/", "bench/CMakeLists.txt", "COMMAND kovra_bench"),
    (r"bench/report/", "bench/CMakeLists.txt", "${report}/tables.py"),
    (r"build/debug/tests/sweep/kovra_sweep", "tests/sweep/CMakeLists.txt", "kovra_sweep"),
    (r"size build/", "", "shows what a build has made, whatever that is"),
]

# Commands that end with another status than 0, which is what they are for.
FAILING = {
    "kovra check cut.xml": 1,
    "../../build/release/tools/kovra decode new.bad.xml": 1,
    "../../build/release/tools/kovra decode new.bad.xml 2> new.bad.txt": 1,
}
DIFFERING = re.compile(r"(printer-query status \| )?kovra diff ")

STUBS = {
    "printer-query": 'cat "$KOVRA_TEST_REPLY"\n',
    "printer-query-all": "cat stream\n",
    "printer-monitor": "cat stream\n",
    "some_fuzzer": '[ -s "${1#-dict=}" ]\n',
}


def commands_of(lines):
    """Whole commands: lines that go on are one; remarks are none."""
    commands, open_one = [], ""
    for line in lines:
        bare = re.sub(r"(^|\s+)#( .*|!.*)?$", "", line).rstrip()
        if not bare:
            continue
        open_one += bare + "\n"
        if not re.search(r"(\\|\||&&)$", bare):
            commands.append(open_one.rstrip("\n"))
            open_one = ""
    return commands + ([open_one] if open_one else [])


class Documents:
    def __init__(self, tool, tree, furnished):
        self.tool = tool
        self.tree = tree
        self.furnished = furnished
        self.furnish(furnished)
        self.checks = 0
        self.problems = []
        self.used = set()
        self.made = set()  # folders of builds

    def expect(self, holds, *said):
        self.checks += 1
        if not holds:
            self.problems.append(" ".join(map(str, said)))

    # What is looked at where a command cannot run.

    def looked_at(self, place, command):
        """Is it a command of the build or a script? Then what it names is there."""
        if command.startswith(("cmake ", "ctest ", "DESTDIR=", "CXX=")):
            self.look_at_build(place, command)
        elif command.startswith("scripts/"):
            self.look_at_script(place, command)
        else:
            return False
        return True

    def look_at_script(self, place, command):
        script = self.tree / command.split()[0]
        self.expect(os.access(script, os.X_OK), place, "no script", script)
        text = script.read_text(encoding="utf-8")
        check = ["bash", "-n", script]
        if "python" in text.split("\n", 1)[0]:
            check = [sys.executable, "-c", "import ast, sys; ast.parse(open(sys.argv[1]).read())", script]
        read = subprocess.run(check, stderr=subprocess.PIPE, text=True)
        self.expect(read.returncode == 0, place, read.stderr)
        for option in re.findall(r"(?<= )--[a-z-]+", command):
            self.expect(option in text, place, "no option", option, "of", script)
        for stage in command.split()[1:] if script.name == "test" else []:
            self.expect(stage == "all" or f'\n  "{stage} ' in text, place, "no stage", stage)

    def look_at_build(self, place, command):
        presets = json.loads((self.tree / "CMakePresets.json").read_text())
        names = {preset["name"] for preset in presets["configurePresets"]}
        for name in re.findall(r"--preset (\S+)", command):
            self.expect(name in names, place, "no preset", name)
        self.made.update(re.findall(r"-B (\S+)", command))
        for folder in re.findall(r"(?:--test-dir|--build|--install) ([^-]\S*)", command):
            known = folder in self.made or folder.removeprefix("build/") in names
            self.expect(known, place, "no folder of a preset:", folder)
        for label in re.findall(r"^ctest .*-L (\w+)", command):
            labelled = [path for path in self.tree.glob("*/CMakeLists.txt")
                        if re.search(rf"LABELS \"?{label}\b", path.read_text())]
            self.expect(labelled, place, "no label", label)
        lists = "".join(path.read_text() for path in
                        [self.tree / "CMakeLists.txt", self.tree / "tools/CMakeLists.txt"])
        for option in re.findall(r"-D(KOVRA_\w+)=", command):
            self.expect(f"option({option} " in lists, place, "no option", option)

    def elsewhere(self, place, command):
        for i, (pattern, file, text) in enumerate(ELSEWHERE):
            if re.match(pattern, command):
                self.used.add(i)
                self.expect(not file or text in (self.tree / file).read_text(), place, file,
                            "does not run", command)
                return True
        return False

    # The folder in which commands run.

    def kovra(self, *arguments, **options):
        return subprocess.run([self.tool, *arguments], check=True, stdout=subprocess.PIPE, **options).stdout

    def furnish(self, folder):
        """The files that all documents speak of."""
        samples = self.tree / "samples"
        for name in ("bin", "replies/hx-1", "replies/hx-2", "yesterday", "build/release/tools",
                     "var/lib/node_exporter", "var/lib/prometheus/node-exporter", "var/log",
                     ".zfunc", ".config/fish/completions", "to-send"):
            (folder / name).mkdir(parents=True)
        for place in ("bin/kovra", "build/release/tools/kovra"):
            (folder / place).symlink_to(self.tool)
        for name, text in STUBS.items():
            (folder / "bin" / name).write_text("#!/bin/sh\n" + text)
            (folder / "bin" / name).chmod(0o755)

        alarm, printing = samples / "status/alarm.xml", samples / "status/printing.xml"
        shutil.copy(alarm, folder / "reply.xml")
        shutil.copy(printing, folder / "before.xml")
        shutil.copy(printing, folder / "yesterday.xml")
        text = printing.read_text()
        for old, new in (("printer_state>printing<", "printer_state>alarm_handling<"),
                         ("alarms>0x0<", "alarms>0x8001a<"), ("error>0<", "error>91<")):
            assert old in text
            text = text.replace(old, new)
        (folder / "after.xml").write_text(text)
        shutil.copy(samples / "config/full.xml", folder / "configuration.xml")
        (folder / "cut.xml").write_text("<get_general_status>\n  <error>5</error>\n")
        (folder / "counters.xml").write_text(
            "<get_general_status>\n  <param_chg_counter>70000</param_chg_counter>\n"
            "  <num_jobs_total>12</num_jobs_total>\n</get_general_status>\n")
        (folder / "key.txt").write_text("seven green umbrellas\n")
        line = "<get_general_status><printer_state>idle</printer_state></get_general_status>\n"
        (folder / "stream").write_text(line * 20)
        for name in ("a", "b", "hx-1/status", "hx-2/status"):
            (folder / f"replies/{name}.xml").write_text(line)
        self.furnish_records(folder)

    def furnish_records(self, folder):
        """Records as JSON: one for each document that is composed of a reply."""
        def decoded(path, document):
            return json.loads(self.kovra("decode", "--format", "json", "--show-secrets", "--as", document, path))
        def sample(document):
            path = folder / f"{document}.sample.xml"
            path.write_bytes(self.kovra("sample", document, "--seed", "3"))
            return decoded(path, document)
        records = [decoded(folder / "configuration.xml", "configuration"),
                   *map(sample, ("printer-id", "capabilities", "media"))]
        together = {"kovra": 1, "readings": [record["readings"][0] for record in records]}
        (folder / "record.json").write_text(json.dumps(together))
        (folder / "identity.json").write_text(json.dumps(records[1]))
        (folder / "before.json").write_bytes(self.kovra("decode", "--format", "json", folder / "before.xml"))

    def furnish_parts(self, folder, text):
        """Of the tree, where a document speaks of it."""
        if re.search(r"\b(samples|src)\b", text):
            for name in ("samples", "src", "tools"):
                shutil.copytree(self.tree / name, folder / name)
            for name in ("new.xml", "new.bad.xml"):
                shutil.copy(folder / "samples/status" / name.replace("new", "alarm"),
                            folder / "samples/status" / name)

    # Running.

    def run(self, folder, commands):
        """What they wrote, and which of them failed."""
        script = "trap 'echo \"$? $BASH_COMMAND\" >>\"$HOME/.failed\"' ERR\n" + "\n".join(commands)
        script = script.replace("/var/", "$HOME/var/")
        (folder / ".failed").write_text("")
        environment = os.environ | {"HOME": str(folder), "PATH": f"{folder}/bin:{os.environ['PATH']}",
                                    "KOVRA_TEST_REPLY": str(folder / "reply.xml")}
        with open(folder / "stream", encoding="utf-8") as stream:
            ran = subprocess.run(["bash", "-o", "pipefail", "-c", script], cwd=folder, env=environment,
                                 stdin=stream, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                                 timeout=120)
        return ran.stdout, (folder / ".failed").read_text().splitlines()

    def run_block(self, folder, block, lines, expected=None):
        wanted = [command for command in commands_of(lines)
                  if not self.elsewhere(block.place, command) and not self.looked_at(block.place, command)]
        if not wanted:
            return
        said, failed = self.run(folder, wanted)
        for line in failed:
            status, command = line.split(" ", 1)
            right = FAILING.get(command, 1 if DIFFERING.match(command) else 0)
            self.expect(int(status) == right, block.place, command, "ended with", status, said)
        for command in wanted:
            if command in FAILING:
                self.expect(f"{FAILING[command]} {command}" in failed, block.place, command, "did not fail")
        self.checks += len(wanted)
        if expected is not None:
            self.expect(said == expected + "\n", block.place, "says:\n" + said)

    def block(self, folder, block, following):
        first = block.lines[0].strip() if block.lines else ""
        if block.language == "json" or (not block.language and first.startswith("{")):
            json.loads(block.text)
            self.checks += 1
        elif block.language == "sh":
            output = following.text if following and following.language == "text" else None
            self.run_block(folder, block, block.lines, output)
        elif first.startswith("$ "):
            self.run_block(folder, block, [first[2:]], "\n".join(block.lines[1:]))
        elif not block.language:
            matching = [pattern for pattern in NO_COMMANDS if re.match(pattern, first)]
            self.used.update(matching)
            if not matching:
                self.run_block(folder, block, block.lines)
        else:  # programs.py looks at programs, and output was compared with its command's
            self.expect(block.language in ("c", "cpp", "cmake", "python", "text"), block.place, "what is",
                        block.language)

    def document(self, name, blocks):
        with tempfile.TemporaryDirectory() as parent:
            folder = pathlib.Path(parent) / "folder"
            shutil.copytree(self.furnished, folder, symlinks=True)
            self.furnish_parts(folder, "\n".join(block.text for block in blocks))
            for block, following in zip(blocks, [*blocks[1:], None]):
                try:
                    self.block(folder, block, following)
                except (ValueError, subprocess.SubprocessError) as failure:
                    self.expect(False, block.place, failure)

    # What is named within a line.

    def help_of(self, *words):
        said = subprocess.run([self.tool, *words, "--help"], stdout=subprocess.PIPE, text=True, check=False)
        return said.stdout if said.returncode == 0 else ""

    def inline(self, name, command):
        words = command.split()
        text = self.help_of(*words[1:2])
        self.expect(text or words[1].startswith("-"), name, "no verb:", command)
        for word in words[2:4]:  # the kinds of compose, and its devices, have options of their own
            text += self.help_of(*words[1:2], word) if re.fullmatch(r"[a-z][a-z-]*", word) else ""
        for option in re.findall(r"(?<= )--?[a-z][a-z-]*", command):
            known = re.search(rf"(^|[ ,]){option}(?![a-z-])", text) or option in ("--version", "--help")
            self.expect(known, name, "no option", option, "of", command)

    def all(self):
        documents = ["README.md", "CONTRIBUTING.md", "SECURITY.md", "samples/README.md",
                     "bindings/python/README.md",
                     *sorted(str(path.relative_to(self.tree)) for path in self.tree.glob("docs/*.md"))]
        for name in documents:
            text = (self.tree / name).read_text(encoding="utf-8")
            self.document(name, sources.of_markdown(name, text))
            for command in sorted(set(sources.inline_commands(text))):
                self.inline(name, command)
        for page in sorted(self.tree.glob("docs/man/*")):
            self.document(page.name, sources.of_manual(page.name, page.read_text(encoding="utf-8")))
        verbs = re.findall(r"^  ([a-z]+) ", self.help_of().partition("Subcommands:")[2].partition("\n\n")[0], re.M)
        kinds = [("compose", kind) for kind in ("configuration", "printer-id", "capabilities", "media",
                                                "device-control")]
        for words in [(), *((verb,) for verb in verbs), *kinds]:
            name = " ".join(("kovra", *words, "--help"))
            blocks = sources.of_help(name, self.help_of(*words))
            self.expect(blocks, name, "has no examples")
            self.document(name, blocks)
        for unused in [*NO_COMMANDS, *range(len(ELSEWHERE))]:
            self.expect(unused in self.used, "nothing of this kind is left:",
                        unused if isinstance(unused, str) else ELSEWHERE[unused])


def main(tool, tree):
    with tempfile.TemporaryDirectory() as furnished:
        documents = Documents(pathlib.Path(tool).resolve(), pathlib.Path(tree).resolve(),
                              pathlib.Path(furnished))
        documents.all()
    for problem in documents.problems:
        print(problem, file=sys.stderr)
    print(f"{documents.checks} checks, {len(documents.problems)} problems")
    return 1 if documents.problems or not documents.checks else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
