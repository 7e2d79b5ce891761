"use strict";

// Tables sort by the column whose heading is clicked; by the same once more, the other way round.
// Numbers sort as numbers, and empty cells come last.
function keyOf(row, column) {
  const cell = row.cells[column];
  const text = cell.dataset.order ?? cell.textContent;
  const number = text.trim() === "" ? NaN : Number(text);
  return { isEmpty: text.trim() === "", number: number, text: text };
}

function compare(a, b) {
  if (Number.isNaN(a.number) || Number.isNaN(b.number)) {
    return a.text.localeCompare(b.text, "en", { numeric: true });
  }
  return a.number - b.number;
}

function sortBy(heading) {
  const table = heading.closest("table");
  const column = heading.cellIndex;
  const isAscending = heading.getAttribute("aria-sort") !== "ascending";
  const rows = Array.from(table.tBodies[0].rows, (row) => ({ row: row, key: keyOf(row, column) }));
  rows.sort((a, b) => a.key.isEmpty - b.key.isEmpty || (isAscending ? 1 : -1) * compare(a.key, b.key));
  for (const other of table.tHead.rows[0].cells) {
    other.removeAttribute("aria-sort");
  }
  heading.setAttribute("aria-sort", isAscending ? "ascending" : "descending");
  table.tBodies[0].append(...rows.map((each) => each.row));
}

for (const heading of document.querySelectorAll("table.sortable th")) {
  heading.querySelector("button").addEventListener("click", () => sortBy(heading));
}

document.getElementById("theme").addEventListener("click", () => {
  const root = document.documentElement;
  const prefersDark = window.matchMedia("(prefers-color-scheme: dark)").matches;
  const isDark = root.dataset.theme ? root.dataset.theme === "dark" : prefersDark;
  root.dataset.theme = isDark ? "light" : "dark";
});
