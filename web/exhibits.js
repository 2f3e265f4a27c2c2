// The gallery's buttons, and turning by drag: all of it as keys, which the program knows.
"use strict";

const pixelsPerTurn = 12;

const canvas = document.getElementById("canvas");
const controls = document.getElementById("controls");
const exhibits = [...document.querySelectorAll("#exhibits button")];

function pressKey(key) {
    window.dispatchEvent(new KeyboardEvent("keydown", { key }));
}

controls.addEventListener("click", (event) => {
    const button = event.target.closest("button");
    if (button) {
        pressKey(button.dataset.key);
    }
});

window.addEventListener("keydown", (event) => {
    const chosen = exhibits.find((button) => button.dataset.key === event.key);
    if (chosen && !event.ctrlKey && !event.altKey && !event.metaKey) {
        exhibits.forEach((button) => button.setAttribute("aria-pressed", button === chosen));
        canvas.setAttribute("aria-label", `Exhibit ${chosen.textContent}`);
    }
});

// Turns once for every so many pixels of the way from where it turned last.
let dragX = 0;
let dragY = 0;

function turn(distance, back, forth) {
    const steps = Math.trunc(distance / pixelsPerTurn);
    for (let step = 0; step < Math.abs(steps); ++step) {
        pressKey(steps < 0 ? back : forth);
    }
    return steps * pixelsPerTurn;
}

canvas.addEventListener("pointerdown", (event) => {
    canvas.setPointerCapture(event.pointerId);
    dragX = event.clientX;
    dragY = event.clientY;
});

canvas.addEventListener("pointermove", (event) => {
    if (canvas.hasPointerCapture(event.pointerId)) {
        dragX += turn(event.clientX - dragX, "ArrowLeft", "ArrowRight");
        dragY += turn(event.clientY - dragY, "ArrowUp", "ArrowDown");
    }
});
