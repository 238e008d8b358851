// How a page looks at this width: what is too wide, cut, too small, laid over something else or hard to read.
'use strict';

const all = (selector, under = document) => [...under.querySelectorAll(selector)];
const nameOf = element => element.tagName + ' ' + element.textContent.trim().slice(0, 40);
const isShown = element =>
    element.checkVisibility({checkVisibilityCSS: true}) && element.getBoundingClientRect().width > 0;

function meet(a, b) {
    return a.left < b.right - 1 && b.left < a.right - 1 && a.top < b.bottom - 1 && b.top < a.bottom - 1;
}

// Colours as [red, green, blue, opacity].
function colour(text) {
    const parts = text.match(/[\d.]+/g).map(Number);
    return [parts[0], parts[1], parts[2], parts.length > 3 ? parts[3] : 1];
}

function mix(top, ground, share) {
    return [0, 1, 2].map(i => top[i] * share + ground[i] * (1 - share)).concat(1);
}

function canvasColour() {
    const probe = document.body.appendChild(document.createElement('div'));
    probe.style.background = 'Canvas';
    const is = colour(getComputedStyle(probe).backgroundColor);
    probe.remove();
    return is;
}

function groundOf(element) {
    const svg = element.closest('svg');
    if (svg) {
        const box = element.getBoundingClientRect(), x = (box.left + box.right) / 2, y = (box.top + box.bottom) / 2;
        const under = all('.paper,.face,.fold', svg).filter(shape => {
            const is = shape.getBoundingClientRect();
            return is.left <= x && x <= is.right && is.top <= y && y <= is.bottom;
        });
        return colour(getComputedStyle(under[under.length - 1]).fill);
    }
    const ground = element.parentElement ? groundOf(element.parentElement) : canvasColour();
    const own = colour(getComputedStyle(element).backgroundColor);
    return mix(own, ground, own[3]);
}

function opacityOf(element) {
    let share = 1;
    for (let at = element; at; at = at.parentElement)
        share *= Number(getComputedStyle(at).opacity);
    return share;
}

function brightness(rgb) {
    const [r, g, b] = rgb.map(c => (c /= 255) <= 0.04045 ? c / 12.92 : ((c + 0.055) / 1.055) ** 2.4);
    return 0.2126 * r + 0.7152 * g + 0.0722 * b;
}

// 1 to 21; a text is readable from 4.5 on.
function contrastOf(element) {
    const ground = groundOf(element), style = getComputedStyle(element);
    const ink = colour(element.closest('svg') ? style.fill : style.color);
    const [low, high] = [brightness(mix(ink, ground, ink[3] * opacityOf(element))), brightness(ground)].sort((a, b) => a - b);
    return (high + 0.05) / (low + 0.05);
}

function textElements() {
    return all('body *').filter(element => !element.closest('script,style,title,#results') && isShown(element) &&
        [...element.childNodes].some(node => node.nodeType === Node.TEXT_NODE && node.data.trim()));
}

// Words on two lines; names of layers and the like have no place for a break and are left out.
function brokenWords() {
    const broken = [];
    const range = document.createRange();
    for (const cell of all('td,th,p,button').filter(isShown))
        for (const node of [...cell.childNodes].filter(node => node.nodeType === Node.TEXT_NODE))
            for (const word of node.data.matchAll(/[A-Za-z]{3,18}(?![A-Za-z_\d$])/g)) {
                range.setStart(node, word.index);
                range.setEnd(node, word.index + word[0].length);
                if (!/[\w$]/.test(node.data[word.index - 1] || ' ') && range.getClientRects().length > 1)
                    broken.push(word[0]);
            }
    return broken;
}

function pairsThatMeet(elements) {
    const boxes = elements.map(element => element.getBoundingClientRect());
    const pairs = [];
    for (let i = 0; i < boxes.length; ++i)
        for (let k = i + 1; k < boxes.length; ++k)
            if (meet(boxes[i], boxes[k]))
                pairs.push(nameOf(elements[i]) + ' / ' + nameOf(elements[k]));
    return pairs;
}

function look() {
    const texts = textElements(), controls = all('button,input').filter(isShown);
    const contrasts = texts.map(contrastOf);
    const outside = (element, box) => {
        const is = element.getBoundingClientRect();
        return is.left < box.left - 1 || is.right > box.right + 1;
    };
    const inPage = {left: 0, right: innerWidth};
    return {
        width: innerWidth, scrollWidth: document.documentElement.scrollWidth,
        dark: matchMedia('(prefers-color-scheme: dark)').matches,
        texts: texts.length, weakest: Math.min(...contrasts),
        weak: texts.filter((element, i) => contrasts[i] < 4.5).map(nameOf),
        tooWide: all('body *').filter(element => !element.closest('svg,pre') && isShown(element) && outside(element, inPage))
            .concat(all('svg text').filter(text => isShown(text) && outside(text, text.closest('svg').getBoundingClientRect())))
            .map(nameOf),
        cut: all('td,th,p,button,h1,h2,li').filter(element => isShown(element) && element.scrollWidth > element.clientWidth + 1)
            .map(nameOf),
        smallText: texts.filter(text => !text.matches('.axis') && text.getBoundingClientRect().height < 10).map(nameOf),
        small: controls.filter(control => {
            const is = control.getBoundingClientRect();
            return is.width < 24 || is.height < 24;
        }).map(nameOf),
        overlapping: pairsThatMeet(controls).concat(pairsThatMeet(all('svg text').filter(isShown)),
                                                    pairsThatMeet(all('td,th').filter(isShown))),
        broken: brokenWords()
    };
}
