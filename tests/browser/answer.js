// Stands before the page's own scripts, so that their errors are seen.

var complaints = [];

function expectSame(wanted, found, what) {
    if (wanted !== found) {
        complaints.push(what + ": found " + found + ", expected " + wanted);
    }
}

window.addEventListener("error", event => complaints.push("script error: " + event.message));

/// Runs the check when the page is loaded, and puts what was found in the place of the page.
function answer(check, facts) {
    window.addEventListener("load", function () {
        try {
            check(facts);
        } catch (error) {
            complaints.push("script error: " + error);
        }
        var text = document.createElement("pre");
        text.id = "answer";
        text.textContent = complaints.slice(0, 20).join("\n");
        document.body.replaceChildren(text);
    });
}
