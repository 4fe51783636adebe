// A report: facts.headings has the heading of each object that is printed, by the id of its place; facts.links is the
// least number of links within the page, facts.outside of links that lead out of it.

function check(facts) {
    checkRows();
    checkHeadings(facts.headings);
    checkLinks(facts);
}

var kinds = ["error", "derived", "empty"];

/// A row is hidden by each of its kinds that is not ticked.
function expectRows(ticked, when) {
    document.querySelectorAll("div.uml tr").forEach(function (row) {
        var isHidden = kinds.some(kind => row.classList.contains(kind) && !ticked.includes(kind));
        var isShown = getComputedStyle(row).display !== "none";
        expectSame(!isHidden, isShown, when + ", a row of class '" + row.className + "' is shown");
    });
}

function checkRows() {
    var boxes = Array.from(document.querySelectorAll("input[type=checkbox]"));
    expectSame(kinds.join(), boxes.map(box => box.nextSibling.textContent.trim()).join(), "check boxes");
    expectRows([], "at first");
    kinds.forEach(function (kind, i) {
        expectSame(true, document.querySelector("tr.property." + kind) !== null, "there is a row of class " + kind);
        boxes[i].click();
        expectRows([kind], "with " + kind + " ticked");
        boxes[i].click();
        expectRows([], "with " + kind + " ticked and unticked");
    });
    boxes.forEach(box => box.click());
    expectRows(kinds, "with all ticked");
}

function headingOf(element) {
    return element.querySelector("h1.head").textContent;
}

function checkHeadings(headings) {
    var objects = document.querySelectorAll("div.uml > div");
    expectSame(Object.keys(headings).length, objects.length, "number of objects");
    objects.forEach(object => expectSame(headings[object.id], headingOf(object), "heading of " + object.id));
}

function checkLinks(facts) {
    var ids = new Set();
    var within = 0;
    var outside = 0;
    document.querySelectorAll("td.value a").forEach(function (link) {
        var id = link.getAttribute("href").substring(1);
        var isPrinted = id in facts.headings;
        expectSame(isPrinted ? 1 : 0, document.querySelectorAll("#" + id).length, "places for links to " + id);
        if (isPrinted) {
            var type = link.closest("tr").querySelector("td.type").textContent;
            expectSame(facts.headings[id], type + " " + link.textContent, "link to " + id);
            within++;
        } else {
            outside++;
        }
        ids.add(id);
    });
    expectSame(true, within >= facts.links, "enough links, of which there are " + within);
    expectSame(true, outside >= facts.outside, "enough links to the outside, of which there are " + outside);
    checkLandings(facts.headings, Array.from(ids));
}

/// Follows some of the links, spread over all: a browser that is sent to and fro more often stays where it is.
function checkLandings(headings, ids) {
    var step = Math.ceil(ids.length / 100);
    ids.filter((id, i) => i % step === 0).forEach(function (id) {
        location.hash = "#" + id;
        var place = document.querySelector(":target");
        expectSame(headings[id] || "nothing", place === null ? "nothing" : headingOf(place), "landing at " + id);
    });
}
