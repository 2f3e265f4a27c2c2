// An alert as a modal dialog of the page, styled by the page.
mergeInto(LibraryManager["library"], {
    $SkovraAlert: {
        okButton: 1,
        cancelButton: 2,

        string: function(text) {
            return new TextDecoder().decode(HEAPU8.subarray(text, HEAPU8.indexOf(0, text)));
        },

        element: function(name, className, text) {
            const element = document.createElement(name);
            element.className = className;
            element.textContent = text;
            return element;
        },

        button: function(text, item, isDefault) {
            const button = SkovraAlert.element("button", isDefault ? "default" : "", text);
            button.type = "button";
            button.autofocus = isDefault;
            button.dataset.button = item;
            return button;
        },

        // texts: error, explanation, and those of the two buttons; no cancel button without a text.
        dialog: function(texts, defaultItem) {
            const dialog = SkovraAlert.element("dialog", "alert", "");
            const error = SkovraAlert.element("p", "error", texts[0]);
            const explanation = SkovraAlert.element("p", "explanation", texts[1]);
            const buttons = SkovraAlert.element("div", "buttons", "");
            const stop = SkovraAlert.element("span", "stop", "");
            error.id = "alert-error";
            explanation.id = "alert-explanation";
            stop.setAttribute("aria-hidden", "true");
            dialog.setAttribute("role", "alertdialog");
            dialog.setAttribute("aria-labelledby", error.id);
            dialog.setAttribute("aria-describedby", explanation.id);
            [SkovraAlert.cancelButton, SkovraAlert.okButton].forEach(function(item) {
                const text = item === SkovraAlert.okButton ? texts[2] : texts[3];
                if (text) {
                    buttons.append(SkovraAlert.button(text, item, item === defaultItem));
                }
            });
            dialog.append(stop, error, explanation, buttons);
            return dialog;
        },

        show: function(texts, defaultItem, cancelItem, answer) {
            const dialog = SkovraAlert.dialog(texts, defaultItem);
            let item = cancelItem; // if the browser itself closes it, as for Escape
            const press = function(pressed) {
                item = pressed;
                dialog.close();
                end();
            };
            let isAnswered = false;
            const end = function() {
                if (!isAnswered) {
                    isAnswered = true;
                    dialog.remove();
                    answer(item);
                }
            };
            dialog.addEventListener("click", function(event) {
                const button = event.target.closest("button");
                if (button) {
                    press(Number(button.dataset.button));
                }
            });
            dialog.addEventListener("keydown", function(event) {
                if (event.key !== "Enter" || event.isComposing) {
                    return;
                }
                if (event.repeat) {
                    event.preventDefault(); // still held down from the box before
                } else if (!event.target.closest("button")) {
                    press(defaultItem);
                }
            });
            dialog.addEventListener("close", end);
            document.body.append(dialog);
            dialog.showModal();
        }
    },

    SkovraAlertRun__deps: ["$SkovraAlert", "$Asyncify"],
    SkovraAlertRun__async: true,
    SkovraAlertRun: function(error, explanation, defaultText, cancelText, defaultItem, cancelItem) {
        return Asyncify.handleSleep(function(wakeUp) {
            const texts = [error, explanation, defaultText, cancelText].map(function(text) {
                return text ? SkovraAlert.string(text) : "";
            });
            SkovraAlert.show(texts, defaultItem, cancelItem, function(item) {
                try {
                    wakeUp(item);
                } catch (thrown) {
                    Module["onThrown"](thrown); // the program's end, too
                }
            });
        });
    }
});
