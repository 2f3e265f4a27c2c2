// Chromium and Firefox, with a profile of their own that is removed.
"use strict";

const { spawn } = require("node:child_process");

const puppeteer = require("puppeteer-core");

const { later, scratchFolder } = require("./cases");

const chromiumArguments = [
    "--no-sandbox",
    "--use-angle=swiftshader",
    "--enable-unsafe-swiftshader",
    "--disable-background-networking",
    "--disable-component-update",
    "--disable-sync",
    "--no-first-run",
];

/** Headless. @p options: as of puppeteer.launch. */
async function openChromium(options = {}) {
    const browser = await puppeteer.launch({
        executablePath: process.env.CHROMIUM || "/usr/bin/chromium",
        userDataDir: scratchFolder(),
        protocolTimeout: 120000,
        ...options,
        args: [...chromiumArguments, ...(options.args || [])],
    });
    later(() => browser.close());
    return browser;
}

/** A virtual display; resolves to its name. */
async function openDisplay() {
    const server = spawn("Xvfb", ["-displayfd", "3", "-noreset", "-screen", "0", "1280x1024x24"], {
        stdio: ["ignore", "ignore", "ignore", "pipe"],
    });
    later(() => server.kill());
    const number = await new Promise((started, failed) => {
        server.stdio[3].once("data", (data) => started(String(data).trim()));
        server.once("error", failed);
        server.once("exit", () => failed(new Error("Xvfb has ended")));
    });
    return ":" + number;
}

/** On a virtual display: without one it has no WebGL 2. */
async function openFirefox(options = {}) {
    const display = await openDisplay();
    const browser = await puppeteer.launch({
        browser: "firefox",
        executablePath: process.env.FIREFOX || "/usr/bin/firefox-esr",
        headless: false,
        userDataDir: scratchFolder(),
        protocolTimeout: 120000,
        env: { ...process.env, DISPLAY: display, HOME: scratchFolder() },
        ...options,
    });
    later(() => browser.close());
    return browser;
}

module.exports = { openChromium, openFirefox };
