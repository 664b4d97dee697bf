
"use strict";

// Without this the page is whole: it only hides what was not asked for.
const search = document.querySelector(".search");
const asked = search.querySelector("input");
const count = search.querySelector("output");
const sections = [...document.querySelectorAll("section")].slice(1).map((section) => ({
  section,
  text: section.querySelector("h2, h3").textContent.toLowerCase(),
  rows: [...section.querySelectorAll("tbody tr")].map((row) => ({
    row,
    text: row.textContent.toLowerCase(),
  })),
}));

function show() {
  const words = asked.value.toLowerCase().split(/\s+/).filter(Boolean);
  const has = (text) => words.every((word) => text.includes(word));
  let shown = 0;
  for (const { section, text, rows } of sections) {
    let left = 0;
    for (const { row, text: told } of rows) {
      row.hidden = !has(`${text} ${told}`);
      left += row.hidden ? 0 : 1;
    }
    section.hidden = words.length > 0 && left === 0;
    shown += left;
  }
  count.textContent = words.length > 0 ? `${shown} rows` : "";
}

search.hidden = false;
asked.addEventListener("input", show);
// A browser may bring back what was asked for.
show();
// What a link leads to may be hidden.
window.addEventListener("hashchange", () => {
  const target = document.getElementById(decodeURIComponent(location.hash.slice(1)));
  if (target && target.hidden) {
    asked.value = "";
    show();
    target.scrollIntoView();
  }
});
