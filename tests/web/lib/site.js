// A static host on 127.0.0.1, as good or as bad as a test wants.
"use strict";

const fs = require("node:fs");
const http = require("node:http");
const path = require("node:path");

const { later } = require("./cases");

const types = {
    ".css": "text/css",
    ".html": "text/html",
    ".js": "text/javascript",
    ".json": "application/json",
    ".mp3": "audio/mpeg",
    ".png": "image/png",
    ".wasm": "application/wasm",
};

/**
 * Serves the folder $SITE below @p options.folder (default "/"). @p options.faults: by file name,
 * what it answers instead: { status, type, bytes, cut: bytes until the connection breaks, hang }.
 * Resolves to { address, requests: paths asked for }.
 */
async function serve(options = {}) {
    const folder = options.folder || "/";
    const faults = options.faults || {};
    const requests = [];
    const connections = new Set();

    const server = http.createServer((request, response) => {
        const asked = decodeURIComponent(request.url.split("?")[0]);
        requests.push(asked);
        const name = asked.startsWith(folder) ? asked.slice(folder.length) || "index.html" : "..";
        const fault = faults[path.basename(name)] || {};
        const file = path.join(process.env.SITE, name);
        if (fault.hang) {
            return;
        }
        if (fault.status || name.includes("..") || !fs.existsSync(file)) {
            response.writeHead(fault.status || 404, { "Content-Type": "text/html" });
            response.end("<!doctype html><title>No</title>");
            return;
        }
        const bytes = fault.bytes || fs.readFileSync(file);
        const type = fault.type || types[path.extname(file)] || "text/plain";
        response.writeHead(200, { "Content-Type": type, "Content-Length": bytes.length });
        if (fault.cut !== undefined) {
            response.write(bytes.subarray(0, fault.cut), () => response.destroy());
        } else {
            response.end(bytes);
        }
    });
    server.on("connection", (socket) => {
        connections.add(socket);
        socket.on("close", () => connections.delete(socket));
    });
    await new Promise((listening) => server.listen(0, "127.0.0.1", listening));
    later(() => {
        connections.forEach((socket) => socket.destroy());
        server.close();
    });
    return { address: `http://127.0.0.1:${server.address().port}${folder}`, requests };
}

module.exports = { serve };
