// For all pages: theme, keyboard shortcuts, copy buttons, and on the index page the search.
(() => {
    "use strict";

    const root = document.documentElement;
    const darkSystem = matchMedia("(prefers-color-scheme: dark)");

    // If storage is not allowed, the choice lasts as long as the page.
    const stored = {
        get() { try { return localStorage.getItem("theme"); } catch { return null; } },
        set(value) { try { localStorage.setItem("theme", value); } catch { /* not stored */ } },
    };

    // Immediately, before the page is painted.
    const chosen = stored.get();
    if (chosen === "light" || chosen === "dark")
        root.dataset.theme = chosen;

    function toggleTheme() {
        const now = root.dataset.theme || (darkSystem.matches ? "dark" : "light");
        root.dataset.theme = now === "dark" ? "light" : "dark";
        stored.set(root.dataset.theme);
    }

    async function copy(button) {
        const source = document.getElementById(button.dataset.copy);
        try {
            await navigator.clipboard.writeText(source.textContent);
            button.textContent = "Copied";
        } catch {
            getSelection().selectAllChildren(source); // the user can copy with the keyboard
            button.textContent = "Selected";
        }
        setTimeout(() => { button.textContent = "Copy"; }, 1500);
    }

    // How well one word of the query matches a message: 0 is best, -1 is no match. `why` receives
    // matches in text that the line does not show.
    function fit(message, word, why) {
        if (message.brief.startsWith(word))
            return 0;
        if (message.name.includes(word))
            return 1;
        if (message.ids.some((id) => id.startsWith(word)))
            return 2;
        if (message.role.includes(word))
            return 3;
        for (const [label, names] of [["key", message.keys], ["record", message.records]]) {
            const found = names.find((name) => name.toLowerCase().includes(word));
            if (found !== undefined) {
                why.add(`${label} ${found}`);
                return 4;
            }
        }
        return -1;
    }

    function startSearch(field) {
        const results = document.getElementById("results");
        const families = document.getElementById("families");
        const status = document.getElementById("status");
        const words = (text) => (text ? text.split(" ") : []);
        const messages = [...families.querySelectorAll("li")].map((item, order) => ({
            item,
            order,
            brief: item.querySelector(".name").textContent.toLowerCase(),
            name: item.dataset.name.toLowerCase(),
            ids: words(item.dataset.ids),
            role: item.querySelector(".role").textContent.toLowerCase(),
            keys: words(item.dataset.keys),
            records: item.dataset.records
                // names of records may contain a space within angle brackets
                ? item.dataset.records.split(/ (?![^<]*>)/) : [],
        }));
        let selected = -1;

        function select(index) {
            const items = [...results.children];
            items[selected]?.firstElementChild.removeAttribute("aria-current");
            selected = Math.max(-1, Math.min(index, items.length - 1));
            const link = items[selected]?.firstElementChild;
            link?.setAttribute("aria-current", "true");
            link?.scrollIntoView({ block: "nearest" });
        }

        function show() {
            const query = field.value.trim().toLowerCase();
            const asked = query.split(/\s+/);
            families.hidden = query !== "";
            results.hidden = query === "";
            results.replaceChildren();
            selected = -1;
            status.textContent = "";
            if (query === "")
                return;
            const hits = [];
            for (const message of messages) {
                const why = new Set();
                const fits = asked.map((word) => fit(message, word, why));
                if (!fits.includes(-1))
                    hits.push({ message, why, score: fits.reduce((sum, one) => sum + one, 0) });
            }
            hits.sort((a, b) => a.score - b.score || a.message.order - b.message.order);
            for (const hit of hits) {
                const item = hit.message.item.cloneNode(true);
                const link = item.firstElementChild;
                link.querySelector(".name").textContent = item.dataset.name;
                for (const text of hit.why) {
                    const note = document.createElement("span");
                    note.className = "why";
                    note.textContent = text;
                    link.querySelector(".role").append(note);
                }
                results.append(item);
            }
            status.textContent = hits.length === 0 ? "Nothing found"
                : hits.length === 1 ? "1 message" : `${hits.length} messages`;
            select(0);
        }

        field.form.addEventListener("submit", (event) => {
            event.preventDefault();
            results.children[Math.max(selected, 0)]?.firstElementChild.click();
        });
        field.addEventListener("input", () => {
            show();
            const query = field.value.trim();
            try {
                history.replaceState(null, "",
                    query ? `?q=${encodeURIComponent(query)}` : location.pathname);
            } catch { /* not always allowed for a local file */ }
        });
        field.addEventListener("keydown", (event) => {
            if (event.key === "ArrowDown" || event.key === "ArrowUp") {
                event.preventDefault();
                select(selected + (event.key === "ArrowDown" ? 1 : -1));
            }
        });
        field.value = new URLSearchParams(location.search).get("q") ?? "";
        show();
    }

    document.addEventListener("DOMContentLoaded", () => {
        const field = document.getElementById("search");
        document.getElementById("theme").addEventListener("click", toggleTheme);
        for (const button of document.querySelectorAll(".copy"))
            button.addEventListener("click", () => copy(button));
        if (document.getElementById("results"))
            startSearch(field);
        document.addEventListener("keydown", (event) => {
            const typing = event.target.matches("input, textarea");
            if (event.key === "/" && !typing && !event.ctrlKey && !event.metaKey && !event.altKey) {
                event.preventDefault();
                field.focus();
                field.select();
            } else if (event.key === "Escape" && event.target === field) {
                field.value = "";
                field.dispatchEvent(new Event("input"));
                field.blur();
            }
        });
    });
})();
