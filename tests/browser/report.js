// A report: facts.headings has the heading of each object that is printed, by the id of its place; facts.links is the
// least number of links within the page, facts.outside of links that lead out of it.

function check(facts) {
    checkRows();
    checkHeadings(facts.headings);
    checkLinks(facts);
}

function isShown(element) {
    return getComputedStyle(element).display !== "none";
}

/// The check boxes by what stands behind them.
function boxes() {
    var found = {};
    document.querySelectorAll("input[type=checkbox]").forEach(function (box) {
        found[box.nextSibling.textContent.trim()] = box;
    });
    return found;
}

/// A row is hidden by each of its kinds that is not ticked.
function expectRows(ticked, when) {
    var kinds = ["error", "derived", "empty"];
    document.querySelectorAll("div.uml tr").forEach(function (row) {
        var hiding = kinds.filter(function (kind) {
            return row.classList.contains(kind) && !ticked.includes(kind);
        });
        expectSame(hiding.length === 0, isShown(row), when + ", a row of class '" + row.className + "' is shown");
    });
}

function checkRows() {
    var box = boxes();
    var kinds = Object.keys(box);
    expectSame("error,derived,empty", kinds.join(), "check boxes");
    kinds.forEach(function (kind) {
        if (document.querySelector("tr.property." + kind) === null) {
            complain("no " + kind + " row to see");
        }
    });
    expectRows([], "at first");
    kinds.forEach(function (kind) {
        box[kind].click();
        expectRows([kind], "with " + kind + " ticked");
        box[kind].click();
        expectRows([], "with " + kind + " ticked and unticked");
    });
    kinds.forEach(function (kind) {
        box[kind].click();
    });
    expectRows(kinds, "with all ticked");
}

function headingOf(element) {
    return element.querySelector("h1.head").textContent;
}

function checkHeadings(headings) {
    var objects = document.querySelectorAll("div.uml > div");
    expectSame(Object.keys(headings).length, objects.length, "number of objects");
    objects.forEach(function (object) {
        expectSame(headings[object.id], headingOf(object), "heading of " + object.id);
    });
}

/// The elements of the page by their ids.
function elementsById() {
    var found = {};
    document.querySelectorAll("[id]").forEach(function (element) {
        (found[element.id] = found[element.id] || []).push(element);
    });
    return found;
}

/// Follows some of the links, spread over all: a browser that is sent to and fro more often stays where it is.
function checkLandings(headings, ids) {
    var step = Math.ceil(ids.length / 100);
    for (var i = 0; i < ids.length; i += step) {
        location.hash = "#" + ids[i];
        var place = document.querySelector(":target");
        var wanted = ids[i] in headings ? headings[ids[i]] : "nothing";
        expectSame(wanted, place === null ? "nothing" : headingOf(place), "landing at " + ids[i]);
    }
}

function checkLinks(facts) {
    var byId = elementsById();
    var ids = new Set();
    var within = 0;
    var outside = 0;
    document.querySelectorAll("td.value a").forEach(function (link) {
        var id = link.getAttribute("href").substring(1);
        var isPrinted = id in facts.headings;
        expectSame(isPrinted ? 1 : 0, (byId[id] || []).length, "places for links to " + id);
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
