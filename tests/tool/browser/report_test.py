#!/usr/bin/env python3
"""A page of `kovra report` with 500 printers in a browser: nothing is forbidden to it or wrong in
it, everything is on the page at the width of a telephone and of a desk, can be read in light and
dark, and is sorted and filtered.

    report_test.py TOOL

Ends with 77 where there is no browser.
"""

import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

import fleet
import webdriver

PRINTERS = 500
HOSTILE = "unbreakable" * 40

# Of all that is shown: what sticks out of the page, with a pixel for rounding.
OUTSIDE = """
const width = document.documentElement.clientWidth;
const out = [];
for (const element of document.body.querySelectorAll('*')) {
  const box = element.getBoundingClientRect();
  if (box.width && (box.left < -1 || box.right > width + 1)) {
    out.push(`${element.tagName} ${box.left} ${box.right}: ${element.textContent.slice(0, 40)}`);
  }
}
if (document.documentElement.scrollWidth > width) out.push('the page scrolls');
return out.slice(0, 10);
"""

# The least contrast of any text with what is behind it, as WCAG counts it.
CONTRAST = """
const channels = (color) => color.match(/[0-9.]+/g).map(Number);
const light = (color) => channels(color).slice(0, 3).map((c) => c / 255)
    .map((c) => c <= 0.04045 ? c / 12.92 : ((c + 0.055) / 1.055) ** 2.4)
    .reduce((sum, c, i) => sum + c * [0.2126, 0.7152, 0.0722][i], 0);
const behind = (element) => {
  for (let e = element; e; e = e.parentElement) {
    const color = getComputedStyle(e).backgroundColor;
    if (channels(color)[3] !== 0) return color;
  }
  return getComputedStyle(document.body).backgroundColor;
};
const least = {ratio: 99, of: ''};
for (const element of document.querySelectorAll('body *')) {
  const own = Array.from(element.childNodes).some((n) => n.nodeType === 3 && n.data.trim());
  if (!own || !element.getClientRects().length) continue;
  const [a, b] = [light(getComputedStyle(element).color), light(behind(element))];
  const ratio = (Math.max(a, b) + 0.05) / (Math.min(a, b) + 0.05);
  if (ratio < least.ratio) Object.assign(least, {ratio, of: element.outerHTML.slice(0, 80)});
}
return least;
"""

ROWS = """
return Array.from(document.querySelectorAll('tbody'))
    .filter((body) => body.getClientRects().length)
    .map((body) => ({
      name: body.querySelector('th bdi').textContent, need: Number(body.dataset.need),
      share: Number(body.dataset.share), state: body.rows[0].cells[2].textContent}));
"""

SORTS = """
return Array.from(document.querySelectorAll('thead th'), (th) => th.getAttribute('aria-sort'));
"""


def make_page(tool, folder):
    """With a fleet, a printer whose texts have no gap, and refused and noted replies."""
    replies = folder / "replies"
    replies.mkdir()
    fleet.main(replies, PRINTERS - 1)
    (replies / f"zz{HOSTILE[:200]}.xml").write_text(
        f"<get_general_status><printer_state>{HOSTILE}</printer_state>"
        f"<{HOSTILE}>1</{HOSTILE}></get_general_status>", encoding="utf-8")
    (replies / "refused.xml").write_text(f"<{HOSTILE}/>", encoding="utf-8")
    page = folder / "report.html"
    files = sorted(str(path) for path in replies.iterdir())
    names = "\n".join(files).encode()
    done = subprocess.run([tool, "report", "--files-from", "-", "--output", str(page)],
                          input=names, stderr=subprocess.DEVNULL, check=False)
    if done.returncode != 1:
        raise RuntimeError(f"the tool ended with {done.returncode}")
    return page


class Report(unittest.TestCase):
    tool = drive = None

    @classmethod
    def setUpClass(cls):
        folder = cls.enterClassContext(tempfile.TemporaryDirectory())
        cls.folder = pathlib.Path(folder)
        cls.page = make_page(cls.tool, cls.folder)
        cls.browser = cls.enterClassContext(webdriver.browser(*cls.drive))

    def setUp(self):
        self.browser.size(1280)
        self.browser.media()
        self.browser.open(self.page)

    def tearDown(self):
        self.assertEqual(self.browser.log(), [])

    def rows(self):
        return self.browser.run(ROWS)

    def press(self, column, times=1):
        for _ in range(times):
            self.browser.type(f"thead th:nth-child({column}) button", "\ue007")  # Enter

    def test_everything_is_on_the_page(self):
        for width in (360, 1280):
            self.browser.size(width)
            self.assertEqual(self.browser.run("return innerWidth"), width)
            self.assertEqual(self.browser.run(OUTSIDE), [])
        opened = "document.querySelectorAll('details').forEach((d, i) => { d.open = i < 50; })"
        for width in (1280, 360):
            self.browser.size(width)
            self.browser.run(opened)
            self.assertEqual(self.browser.run(OUTSIDE), [])

    def test_what_sticks_out_is_found(self):
        for selector in ("h1", "tbody:last-of-type td bdi"):
            self.browser.open(self.page)
            self.browser.run("const element = document.querySelector(arguments[0]);"
                             "element.append('x'.repeat(500));"
                             "element.style.whiteSpace = 'nowrap'", selector)
            self.assertNotEqual(self.browser.run(OUTSIDE), [])

    def test_every_text_can_be_read(self):
        colors = set()
        for scheme in ("light", "dark"):
            self.browser.media(scheme=scheme)
            least = self.browser.run(CONTRAST)
            self.assertGreaterEqual(least["ratio"], 4.5, f"{scheme}: {least['of']}")
            colors.add(self.browser.run("return getComputedStyle(document.body).color"))
        self.assertEqual(len(colors), 2)

    def test_print_has_no_controls(self):
        shown = "return document.querySelector('.controls').getClientRects().length"
        self.assertEqual(self.browser.run(shown), 1)
        self.browser.media(kind="print", scheme="dark")
        self.assertEqual(self.browser.run(shown), 0)
        self.assertEqual(self.browser.run("return getComputedStyle(document.body).backgroundColor"),
                         "rgb(255, 255, 255)")
        self.assertEqual(self.browser.run(OUTSIDE), [])

    def test_sorts(self):
        rows = self.rows()
        self.assertEqual(len(rows), PRINTERS)
        self.assertEqual([row["need"] for row in rows], sorted(row["need"] for row in rows))
        self.assertEqual(self.browser.run(SORTS), [None, "ascending", None, None])
        for column, key in ((1, "name"), (2, "need"), (3, "state"), (4, "share")):
            expected = [None] * 4
            for direction in ("ascending", "descending"):
                self.press(column)
                expected[column - 1] = direction
                self.assertEqual(self.browser.run(SORTS), expected)
                keys = [row[key] for row in self.rows()]
                self.assertEqual(keys, sorted(keys, reverse=direction == "descending"))
                self.assertEqual(len(keys), PRINTERS)
                self.assertGreater(len(set(keys)), 2)

    def test_filters(self):
        status = "return document.getElementById('shown').textContent"
        needing = sum(row["need"] < 2 for row in self.rows())
        self.assertEqual(self.browser.run(status), f"{PRINTERS} of {PRINTERS} shown")
        self.browser.type("#needing", " ")
        self.assertEqual(len(self.rows()), needing)
        self.assertEqual(self.browser.run(status), f"{needing} of {PRINTERS} shown")
        self.browser.type("#needing", " ")
        self.browser.type("#find", "PRINTER-0001 hx")
        self.assertEqual([row["name"] for row in self.rows() if "printer-0001" not in row["name"]], [])
        self.assertEqual(len(self.rows()), 10)
        self.browser.size(360)
        self.assertEqual(len(self.rows()), 10)
        self.browser.type("#find", " nowhere")
        self.assertEqual(self.rows(), [])

    def test_is_whole_without_the_script(self):
        text = self.page.read_text(encoding="utf-8")
        begin, end = text.index("<script>"), text.index("</script>")
        page = self.folder / "still.html"
        page.write_text(text[:begin] + text[end + len("</script>"):], encoding="utf-8")
        self.browser.open(page)
        self.assertEqual(len(self.rows()), PRINTERS)
        self.assertEqual(
            self.browser.run("return document.querySelector('.controls').getClientRects().length"), 0)
        self.assertEqual(self.browser.run("return document.querySelectorAll('button').length"), 0)

    def test_runs_nothing_that_came_into_it(self):
        text = self.page.read_text(encoding="utf-8")
        page = self.folder / "attacked.html"
        page.write_text(text.replace(
            "<main>", '<main><script>window.bad = 1</script><style>h1 { opacity: 0 }</style>'
                      '<p onclick="window.bad = 1" style="opacity: 0" id="p">x</p>'
                      '<img src="http://127.0.0.1:9/x"><a href="javascript:window.bad = 1">x</a>'),
            encoding="utf-8")
        self.browser.open(page)
        self.browser.run("document.getElementById('p').click(); document.querySelector('a').click();"
                         "document.querySelector('[href^=javascript]').click()")
        state = self.browser.run("return [window.bad, getComputedStyle(p).opacity,"
                                 "getComputedStyle(document.querySelector('h1')).opacity]")
        self.assertEqual(state, [None, "1", "1"])
        self.assertEqual(len(self.rows()), PRINTERS)
        violations = [line for line in self.browser.log() if "Content Security Policy" in line]
        self.assertGreaterEqual(len(violations), 5)


def main(tool):
    Report.tool = tool
    Report.drive = [shutil.which(name) for name in ("chromedriver", "chromium")]
    if None in Report.drive:
        print("skipped: there is no chromedriver, or no chromium")
        return 77
    suite = unittest.defaultTestLoader.loadTestsFromTestCase(Report)
    return 0 if unittest.TextTestRunner(verbosity=2).run(suite).wasSuccessful() else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
