// Last in a copy of a page: looks at it, uses it where it can be used, and
// gives what was found to the frame's page.
'use strict';
(async () => {
    try {
        found.look = look();
        found.uses = [];
        for (const page of all('article').filter(page => page.querySelector('svg')))
            found.uses.push(await use(page));
        found.after = look();
    } catch (error) {
        found.errors.push(String(error.stack));
    }
    found.asked.push(...performance.getEntriesByType('resource').map(entry => entry.name));
    parent.postMessage(JSON.stringify(found), '*');
})();
