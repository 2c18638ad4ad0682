// Search by words over the pages, members and tasks, in the reader's browser. SEARCH_DATA comes from index.py.
"use strict";

(() => {
    const LESS_THAN_A_WORD = new Set("a an and are at be by do does for from how i in is it me my of on or that the to two what where which with".split(" "));
    const MOST_RESULTS = 24;
    // What a word counts where it stands: in the name, in the task, in the text; and what a beginning or a synonym keeps.
    const IN_NAME = 9, IN_TASK = 7, IN_TEXT = 1, OF_BEGINNING = 0.45, OF_SYNONYM = 0.5;

    // The words of a text; names such as MakeConvexHull also in their parts.
    function wordsOf(text) {
        const parts = text.replace(/([a-z0-9])([A-Z])/g, "$1 $2").replace(/([A-Z])([A-Z][a-z])/g, "$1 $2");
        return [...new Set((text + " " + parts).toLowerCase().match(/[a-z0-9_]+/g) || [])].flatMap(word => {
            const forms = [word];
            if (/^t[a-z]+\d?$/.test(word)) forms.push(word.slice(1).replace(/\d$/, ""));
            return forms;
        });
    }
    // One form for a word and its plural.
    function stem(word) {
        if (word.length > 4 && word.endsWith("ies")) return word.slice(0, -3) + "y";
        if (word.length > 3 && word.endsWith("s") && !word.endsWith("ss")) return word.slice(0, -1);
        return word;
    }

    let index = null;
    function makeIndex() {
        const places = new Map(); // word -> Map(entry -> what it counts)
        const add = (text, entry, count) => {
            for (const word of new Set(wordsOf(text).map(stem))) {
                if (!places.has(word)) places.set(word, new Map());
                const entries = places.get(word);
                entries.set(entry, Math.max(entries.get(entry) || 0, count));
            }
        };
        SEARCH_DATA.entries.forEach(([title, context, , , text], entry) => {
            add(text, entry, IN_TEXT);
            add(context, entry, IN_TASK);
            add(title, entry, IN_NAME);
        });
        const synonyms = new Map();
        for (const group of SEARCH_DATA.synonyms)
            for (const word of group) {
                const key = stem(word);
                if (!synonyms.has(key)) synonyms.set(key, new Set());
                group.forEach(other => other !== word && synonyms.get(key).add(stem(other)));
            }
        return { places, synonyms, words: [...places.keys()].sort() };
    }

    // What each entry counts for one word of the question.
    function countsOf(word, isLast) {
        const counts = new Map();
        const take = (found, share) => {
            const entries = index.places.get(found);
            if (!entries) return;
            const rare = Math.log(1 + SEARCH_DATA.entries.length / entries.size);
            for (const [entry, count] of entries) counts.set(entry, Math.max(counts.get(entry) || 0, count * share * rare));
        };
        take(word, 1);
        if (isLast || !index.places.has(word))
            for (const other of index.words) if (other !== word && word.length > 1 && other.startsWith(word)) take(other, OF_BEGINNING);
        for (const other of index.synonyms.get(word) || []) take(other, OF_SYNONYM);
        return counts;
    }

    function find(question) {
        index = index || makeIndex();
        let words = (question.toLowerCase().match(/[a-z0-9_]+/g) || []);
        const telling = words.filter(word => !LESS_THAN_A_WORD.has(word));
        if (telling.length) words = telling;
        const lists = words.map((word, i) => countsOf(stem(word), i === words.length - 1));
        const totals = new Map();
        for (const counts of lists)
            for (const [entry, count] of counts) {
                const total = totals.get(entry) || { sum: 0, words: 0 };
                totals.set(entry, { sum: total.sum + count, words: total.words + 1 });
            }
        const phrase = question.trim().toLowerCase();
        const seen = new Set();
        return [...totals].map(([entry, total]) => {
            const [title, context, , weight, text] = SEARCH_DATA.entries[entry];
            let score = total.sum * weight * (total.words / words.length) ** 2;
            if (title.toLowerCase() === phrase || title.toLowerCase().endsWith("::" + phrase)) score *= 2.5;
            else if (words.length > 1 && (context + " " + text).toLowerCase().includes(phrase)) score *= 1.4;
            // Of two alike the shorter name is nearer.
            return { entry, score: score / (1 + title.length / 400) };
        }).sort((a, b) => b.score - a.score || a.entry - b.entry).filter(({ entry }) => {
            const address = SEARCH_DATA.entries[entry][2];
            return !seen.has(address) && seen.add(address);
        }).slice(0, MOST_RESULTS).map(({ entry }) => SEARCH_DATA.entries[entry]);
    }

    const field = document.getElementById("search-field"), list = document.getElementById("search-results");
    if (!field || !list) return;
    function show() {
        const results = field.value.trim() ? find(field.value) : [];
        list.replaceChildren(...results.map(([title, context, address, , text]) => {
            const item = document.createElement("li"), link = document.createElement("a"), quiet = document.createElement("span");
            link.href = address;
            link.textContent = title;
            quiet.textContent = context || text.slice(0, 110);
            link.append(quiet);
            item.append(link);
            return item;
        }));
        if (field.value.trim() && !results.length) {
            const item = document.createElement("li");
            item.textContent = "Nothing found.";
            list.append(item);
        }
        list.hidden = !field.value.trim();
    }
    field.addEventListener("input", show);
    field.addEventListener("focus", show);
    field.addEventListener("keydown", event => {
        const links = [...list.querySelectorAll("a")];
        if (event.key === "Enter" && links.length) location.href = links[0].href;
        if (event.key === "ArrowDown" && links.length) { links[0].focus(); event.preventDefault(); }
        if (event.key === "Escape") { field.value = ""; show(); }
    });
    list.addEventListener("keydown", event => {
        const links = [...list.querySelectorAll("a")], at = links.indexOf(document.activeElement);
        if (event.key === "ArrowDown" && at + 1 < links.length) { links[at + 1].focus(); event.preventDefault(); }
        if (event.key === "ArrowUp") { (links[at - 1] || field).focus(); event.preventDefault(); }
        if (event.key === "Escape") { field.focus(); list.hidden = true; }
    });
    document.addEventListener("click", event => { if (!event.target.closest("#search")) list.hidden = true; });
    if (window.matchMedia("(min-width: 768px)").matches && location.hash === "#search") field.focus();
})();
