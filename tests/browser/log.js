// A log: facts.rows has the class and the colour of each row.

function check(facts) {
    var rows = Array.from(document.querySelectorAll("#log tr")).slice(1); // the first one has the headings
    expectSame(facts.rows.length, rows.length, "number of rows");
    rows.forEach(function (row, i) {
        var wanted = facts.rows[i];
        expectSame(wanted[0], row.className, "class of row " + i);
        row.querySelectorAll("td").forEach(function (cell) {
            expectSame(wanted[1], getComputedStyle(cell).color, "colour of " + cell.className + " in " + row.className);
        });
    });
    checkToggling(rows, "Trace", 4);
    checkToggling(rows, "Fatal", 9);
}

/// Rules are addressed by their places in the style sheet.
function checkToggling(rows, level, rule) {
    [level, "none"].forEach(function (hidden) {
        toggleCssDisplayNum(rule);
        rows.forEach(function (row) {
            var isShown = getComputedStyle(row).display !== "none";
            expectSame(row.className !== hidden, isShown, "with " + hidden + " hidden, " + row.className + " is shown");
        });
    });
}
