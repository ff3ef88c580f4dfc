.pragma library

// What the eye finds below an item: its words and its symbols.

function below(item, isWanted) {
    let found = [];
    for (let index = 0; index < item.children.length; ++index) {
        const child = item.children[index];
        if (!child.visible)
            continue;
        if (isWanted(child))
            found.push(child);
        found = found.concat(below(child, isWanted));
    }
    return found;
}

function textsOf(item) {
    return below(item, child => child.contentWidth !== undefined && child.truncated !== undefined && child.text !== "");
}

function symbolsOf(item) {
    return below(item, child => child.tint !== undefined && child.sourceSize !== undefined && child.name !== undefined && child.name !== "");
}

// The words below `item` that are not as the table says, which holds [words, ink] or
// [words, ink, font]; an empty text when all are.
function faultsIn(item, table) {
    const texts = textsOf(item);
    let faults = [];
    for (const [words, ink, font] of table) {
        const text = texts.find(each => each.text === words);
        if (!text)
            faults.push("no \"" + words + "\" among " + texts.map(each => each.text).join(" | "));
        else if (String(text.color) !== String(ink))
            faults.push(words + " in " + text.color + " rather than " + ink);
        else if (font && String(text.font) !== String(font))
            faults.push(words + " in " + text.font + " rather than " + font);
    }
    return faults.join("; ");
}

// The symbols below `item` as "name tint size", in their order.
function symbolWordsOf(item) {
    return symbolsOf(item).map(symbol => symbol.name + " " + symbol.tint + " " + symbol.size);
}
