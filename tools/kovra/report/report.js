'use strict';

// Sorts and filters the page. Without it the page is whole: all that it adds is what is clicked.
(() => {
  const table = document.querySelector('table');
  if (!table) return;

  const bodies = Array.from(table.tBodies);
  const heads = Array.from(table.tHead.rows[0].cells);
  const collator = new Intl.Collator('en', {numeric: true, sensitivity: 'base'});

  // ---- Sorting

  const cellText = (body, index) => body.rows[0].cells[index].textContent;
  const comparisons = {
    name: (a, b) => collator.compare(cellText(a, 0), cellText(b, 0)),
    need: (a, b) => Number(a.dataset.need) - Number(b.dataset.need),
    state: (a, b) => collator.compare(cellText(a, 2), cellText(b, 2)),
    share: (a, b) => Number(a.dataset.share) - Number(b.dataset.share),
  };

  const sortBy = (head) => {
    const isAscending = head.getAttribute('aria-sort') !== 'ascending';
    const compare = comparisons[head.dataset.by];
    bodies.sort((a, b) => isAscending ? compare(a, b) : compare(b, a));
    for (const other of heads) other.removeAttribute('aria-sort');
    head.setAttribute('aria-sort', isAscending ? 'ascending' : 'descending');
    table.append(...bodies);
  };

  for (const head of heads) {
    const button = document.createElement('button');
    button.type = 'button';
    button.append(...head.childNodes);
    button.addEventListener('click', () => sortBy(head));
    head.append(button);
  }

  // ---- Filtering

  const find = document.getElementById('find');
  const needing = document.getElementById('needing');
  const shown = document.getElementById('shown');
  const texts = new Map();

  const textOf = (body) => {
    if (!texts.has(body)) texts.set(body, body.textContent.toLowerCase());
    return texts.get(body);
  };

  const filter = () => {
    const words = find.value.toLowerCase().split(/\s+/).filter((word) => word);
    let count = 0;
    for (const body of bodies) {
      const isNeeding = Number(body.dataset.need) < 2;
      const fits = (isNeeding || !needing.checked) &&
          (!words.length || words.every((word) => textOf(body).includes(word)));
      body.hidden = !fits;
      count += fits;
    }
    shown.textContent = `${count} of ${bodies.length} shown`;
  };

  find.addEventListener('input', filter);
  needing.addEventListener('change', filter);
  document.querySelector('.controls').hidden = false;
  filter();  // what the browser kept of an earlier visit
})();
