// What the page has fetched, as the program's resource folder.
Module["preRun"] = [function() {
    FS.mkdir("/resources");
    Object.keys(Module["files"]).forEach(function(name) {
        const file = Module["files"][name];
        if (file["missing"]) {
            return;
        }
        const path = "/resources/" + name;
        FS.writeFile(path, file["bytes"] || "", { canOwn: true });
        if (file["unreadable"]) {
            FS.chmod(path, 0);
        }
    });
}];
