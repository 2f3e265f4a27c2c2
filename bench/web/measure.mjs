// Plays in a browser and writes what its page answered, with the time of each answer, for bench-truth:
//   measure.mjs FOLDER ANSWERS chromium|firefox plain|stalls|background|start SECONDS
// The browser is Debian's.
import { createReadStream, writeFileSync } from "node:fs";
import { createServer } from "node:http";
import { createRequire } from "node:module";
import path from "node:path";
import { setTimeout as sleep } from "node:timers/promises";

const require = createRequire(import.meta.url); // which finds what is in NODE_PATH
const puppeteer = require("puppeteer-core");

const [folder, answersFile, kind, mode, seconds] = process.argv.slice(2);

const types = { ".html": "text/html", ".js": "text/javascript", ".wasm": "application/wasm" };

function serve() {
    const server = createServer((request, response) => {
        const name = request.url === "/" ? "index.html" : path.basename(request.url);
        createReadStream(path.join(folder, name))
            .on("open", function () {
                const type = types[path.extname(name)] || "application/octet-stream";
                response.writeHead(200, { "Content-Type": type });
                this.pipe(response);
            })
            .on("error", () => response.writeHead(404).end());
    });
    return new Promise((resolve) => server.listen(0, "127.0.0.1", () => resolve(server)));
}

function launch() {
    if (kind === "firefox") {
        return puppeteer.launch({ browser: "firefox", executablePath: "/usr/bin/firefox-esr" });
    }
    return puppeteer.launch({
        executablePath: "/usr/bin/chromium",
        ignoreDefaultArgs: ["--mute-audio"],
        args: ["--no-sandbox", "--disable-background-networking", "--disable-component-update",
            "--disable-sync", "--no-first-run"],
    });
}

// CLOCK_MONOTONIC of the page's time 0, in ns. Chromium says it; elsewhere it is asked for its time
// often, and the answer that took least is within half of what it took.
async function originNs(page) {
    if (kind === "chromium") {
        const session = await page.createCDPSession();
        await session.send("Performance.enable");
        const { metrics } = await session.send("Performance.getMetrics");
        return metrics.find((metric) => metric.name === "NavigationStart").value * 1e9;
    }
    let least = Infinity;
    let origin = 0;
    for (let i = 0; i < 200; i++) {
        const before = process.hrtime.bigint();
        const now = await page.evaluate(() => performance.now());
        const after = process.hrtime.bigint();
        if (Number(after - before) < least) {
            least = Number(after - before);
            origin = Number((before + after) / 2n) - now * 1e6;
        }
    }
    return origin;
}

// Another tab in front of the page, from 4 s on, for 10 s.
async function cover(browser, page) {
    await sleep(4000);
    const other = await browser.newPage();
    await other.bringToFront();
    if (!(await page.evaluate(() => document.hidden))) {
        throw new Error("the page is not in the background");
    }
    await sleep(10000);
    await page.bringToFront();
}

const server = await serve();
const browser = await launch();
const page = await browser.newPage();
page.on("pageerror", (error) => {
    console.error(error.message);
    process.exitCode = 1;
});
await page.goto(`http://127.0.0.1:${server.address().port}/`);
await page.evaluate(() => bench.load());
await page.click("#start"); // lets sound begin
await sleep(2000); // the boxes
const playing = page.evaluate((length, stallMs, firstStallMs) =>
    bench.play(length, stallMs, firstStallMs),
Number(seconds), mode === "stalls" ? 300 : 0, mode === "start" ? 1000 : 0);
if (mode === "background") {
    await cover(browser, page);
}
const answers = await playing;
const origin = await originNs(page);
await sleep(300);
await browser.close();
server.close();
writeFileSync(answersFile, answers.map(([ms, position]) =>
    `${Math.round(origin + ms * 1e6)} ${position.toFixed(4)}\n`).join(""));
