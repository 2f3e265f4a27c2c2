// Eleven moments of the show in virtual time and the gallery's exhibits, compared with reference
// images of SwiftShader's drawing and with what the native programs draw.
"use strict";

const assert = require("node:assert/strict");
const { execFileSync, spawnSync } = require("node:child_process");
const fs = require("node:fs");
const path = require("node:path");

const { run, scratchFolder } = require("./lib/cases");
const { openChromium } = require("./lib/browsers");
const { serve } = require("./lib/site");
const { visit } = require("./lib/visit");

const golden = path.join(__dirname, "golden");
const moments = [0, 25, 1000, 7500, 14975, 15000, 22500, 29975, 30000, 32000, 33000];
const exhibits = ["1", "2", "3", "4", "5", "6", "7", "8"];

const tickMs = 25;
const belowAFrameMs = 0.02; // of sound: positions are rounded down

/** A picture is kept after it was shown. */
const keepPictures = () => {
    const { getContext } = HTMLCanvasElement.prototype;
    HTMLCanvasElement.prototype.getContext = function (kind, wanted) {
        return getContext.call(this, kind, { ...wanted, preserveDrawingBuffer: true });
    };
};

async function save(visited, file) {
    const url = await visited.page.$eval("#canvas", (canvas) => canvas.toDataURL("image/png"));
    fs.writeFileSync(file, Buffer.from(url.split(",")[1], "base64"));
}

const nameOf = (ms) => String(ms).padStart(5, "0") + ".png";

/** Takes the moments of the show at @p scale into @p folder. */
async function takeShow(scale, folder) {
    const browser = await openChromium();
    const site = await serve();
    const virtualTime = fs.readFileSync(path.join(__dirname, "lib", "virtual-time.js"), "utf8");
    const show = await visit(browser, site.address, {
        viewport: { width: 1280, height: 1000, deviceScaleFactor: scale },
        prepare: `(${keepPictures})();\n${virtualTime}`,
    });
    const advance = (ms) => show.page.evaluate((by) => window.virtualTime.advance(by), ms);
    const advancing = { yes: true };
    const advanced = (async () => {
        while (advancing.yes && !show.output.join("\n").includes("Loading Textures...")) {
            await advance(1);
        }
    })();
    await show.answerBoxes(false);
    await show.printed("Loading Textures...");
    advancing.yes = false;
    await advanced;

    let positionMs = 0;
    await advance(0);
    for (const ms of moments) {
        if (positionMs === 0 && ms > 0) {
            await show.page.evaluate((by) => window.virtualTime.skip(by), belowAFrameMs);
        }
        await advance(ms - positionMs);
        positionMs = ms;
        await save(show, path.join(folder, nameOf(ms)));
    }
    show.expectNothingUncaught();
    await advance(tickMs);
    await show.ended();
}

/** Takes the exhibits at @p scale into @p folder. */
async function takeGallery(scale, folder) {
    const browser = await openChromium();
    const site = await serve();
    const gallery = await visit(browser, site.address + "gallery.html", {
        viewport: { width: 1280, height: 1200, deviceScaleFactor: scale },
        prepare: keepPictures,
    });
    await gallery.page.waitForSelector("#controls:not([hidden])");
    await gallery.page.focus("#canvas");
    for (const key of exhibits) {
        await gallery.page.keyboard.press(key);
        await new Promise((drawn) => setTimeout(drawn, 1000));
        await save(gallery, path.join(folder, key + ".png"));
    }
    gallery.expectNothingUncaught();
}

function expectReferenceImages(kind, folder) {
    assert.deepEqual(fs.readdirSync(folder), fs.readdirSync(path.join(golden, kind)));
    const program = path.join(process.env.PROGRAMS, "compare-pictures");
    const different = fs.readdirSync(folder).flatMap((name) => {
        const shown = path.join(process.env.DIFFERENCES, `${kind}.${name}`);
        const files = [path.join(golden, kind, name), path.join(folder, name), shown];
        const { status, stdout } = spawnSync(program, files, { encoding: "utf8" });
        return status === 0 ? [] : [stdout.trim()];
    });
    assert.deepEqual(different, []);
}

/** At most 1 pixel of 200 in each picture is farther than @p levels of 255 from the native one. */
function expectNative(native, folder, levels) {
    const far = fs.readdirSync(folder).map((name) => {
        const files = [path.join(native, name), path.join(folder, name)];
        const options = ["-metric", "AE", "-fuzz", `${(100 * levels) / 255}%`];
        const { stderr } = spawnSync("compare", [...options, ...files, "null:"], { encoding: "utf8" });
        return { name, farPercent: (100 * Number(stderr)) / (1024 * 768) };
    });
    console.log(far);
    assert.deepEqual(far.filter(({ farPercent }) => !(farPercent <= 0.5)), []);
}

const smallScale = 0.375; // 384 by 288

async function ShowIsAsKept() {
    const folder = scratchFolder();
    await takeShow(smallScale, folder);
    expectReferenceImages("show", folder);
}

async function GalleryIsAsKept() {
    const folder = scratchFolder();
    await takeGallery(smallScale, folder);
    expectReferenceImages("gallery", folder);
}

async function ShowIsAsNative() {
    const native = scratchFolder();
    const stills = moments.flatMap((ms) => ["--still", `${ms}=${path.join(native, nameOf(ms))}`]);
    const recorder = path.join(process.env.PROGRAMS, "skovra-record");
    execFileSync(recorder, ["--size", "1024x768", ...stills], { stdio: "ignore" });
    const folder = scratchFolder();
    await takeShow(1, folder);
    expectNative(native, folder, 3);
}

async function GalleryIsAsNative() {
    const native = scratchFolder();
    const script = path.join(__dirname, "..", "endtoend", "Gallery.sh");
    execFileSync("bash", [script, "PicturesAreTaken"], {
        env: { ...process.env, PICTURES: native },
        stdio: "inherit",
    });
    const folder = scratchFolder();
    await takeGallery(1, folder);
    // SwiftShader has corners on 16ths of a pixel, Mesa on 256ths: turned pictures move by so much.
    expectNative(native, folder, 16);
}

/** Not a test: makes the reference images anew. */
async function Keep() {
    for (const [kind, take] of Object.entries({ show: takeShow, gallery: takeGallery })) {
        fs.mkdirSync(path.join(golden, kind), { recursive: true });
        await take(smallScale, path.join(golden, kind));
    }
}

run({ ShowIsAsKept, GalleryIsAsKept, ShowIsAsNative, GalleryIsAsNative, Keep });
