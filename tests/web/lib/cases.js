// Runs one case of a test: node TEST.js CASE, as CTest does. A case is a function that returns or
// resolves; whatever it opened with `later` is closed after it, in the opposite order.
"use strict";

const fs = require("node:fs");
const os = require("node:os");
const path = require("node:path");

const undo = [];

/** Calls @p action when the case is over, however it ends. */
function later(action) {
    undo.push(action);
}

async function close() {
    while (undo.length > 0) {
        try {
            await undo.pop()();
        } catch (problem) {
            console.error("while closing:", problem);
        }
    }
}

/** A folder that is removed when the case is over. */
function scratchFolder() {
    const folder = fs.mkdtempSync(path.join(os.tmpdir(), "skovra-web-"));
    later(() => fs.rmSync(folder, { recursive: true, force: true }));
    return folder;
}

/** Runs the function of @p cases that the command line names; exit status 1 if it throws. */
async function run(cases) {
    const name = process.argv[2];
    if (!Object.prototype.hasOwnProperty.call(cases, name)) {
        console.error("cases: " + Object.keys(cases).join(" "));
        process.exit(2);
    }
    let status = 0;
    try {
        await cases[name]();
    } catch (problem) {
        console.error(problem);
        status = 1;
    }
    await close();
    process.exit(status);
}

module.exports = { later, run, scratchFolder };
