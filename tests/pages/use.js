// Uses a page as a person does, and tells what it showed. Needs look.js.
'use strict';

const press = element => element.click();
const isHidden = element => getComputedStyle(element).display === 'none';
const indices = (list, want) => list.map((element, i) => want(element) ? i : -1).filter(i => i >= 0);
const spread = (list, most) => list.filter((_, i) => i % Math.ceil(list.length / most) === 0);

function parts(page) {
    return {
        page, svg: page.querySelector('svg'), slider: page.querySelector('input[type=range]'),
        says: page.querySelector('.says'), items: all('.item', page), lines: all('pre span', page)
    };
}

const lineOf = item => Number(item.dataset.line);
const lastOf = item => Number(item.dataset.last);

// What is lit and shown now. Light is what the eye sees: the style, not the class.
function state(at) {
    const box = at.page.querySelector('pre').getBoundingClientRect();
    const lit = indices(at.lines, line => getComputedStyle(line).outlineStyle === 'solid');
    const row = lit.length === 1 ? at.lines[lit[0]].getBoundingClientRect() : null;
    return {
        value: Number(at.slider.value), says: at.says.textContent, programLines: lit.map(i => i + 1),
        lineIsInSight: row !== null && row.top >= box.top - 1 && row.bottom <= box.bottom + 1,
        lit: indices(at.items, item => getComputedStyle(item).filter.includes('drop-shadow')),
        shown: indices(at.items, item => !isHidden(item) && getComputedStyle(item).visibility === 'visible'),
        rapidsShown: all('.rapid', at.page).filter(way => getComputedStyle(way).visibility === 'visible').length,
        rapidsBefore: all('.rapid', at.page).filter(way => lineOf(way) <= Number(at.slider.value)).length
    };
}

function slideTo(at, line) {
    at.slider.value = line;
    at.slider.dispatchEvent(new Event('input', {bubbles: true}));
    return {line, ...state(at)};
}

// A point on the item as drawn, in the window.
function pointOn(item) {
    const shape = item.querySelector('.way,.hole,.blade-middle,.row,.unknown');
    const on = shape.tagName === 'circle' ? new DOMPoint(shape.cx.baseVal.value, shape.cy.baseVal.value)
                                          : shape.getPointAtLength(shape.getTotalLength() * 0.37);
    return on.matrixTransform(shape.getScreenCTM());
}

// A click at the item's place goes to whatever lies on top there.
function clickOn(at, item, besides = 0) {
    slideTo(at, Number(at.slider.max));
    item.scrollIntoView({block: 'center'});
    const point = pointOn(item), x = Math.round(point.x + besides), y = Math.round(point.y); // as of a mouse
    const top = document.elementFromPoint(x, y);
    const under = document.elementsFromPoint(x, y).map(part => part.closest('.item')).filter(part => part);
    top.dispatchEvent(new MouseEvent('click', {bubbles: true, clientX: x, clientY: y}));
    return {item: at.items.indexOf(item), top: under.length ? at.items.indexOf(under[0]) : -1, ...state(at)};
}

function legend(at) {
    return all('[data-light]', at.page).map(button => {
        const group = Number(button.dataset.light);
        const before = indices(at.items, isHidden);
        press(button);
        const off = {hidden: indices(at.items, isHidden), pressed: button.ariaPressed, contrast: contrastOf(button)};
        press(button);
        return {
            text: button.textContent, count: Number(button.closest('tr').cells[1].textContent), before, ...off,
            members: indices(at.items, item => Number(item.dataset.group) === group),
            after: indices(at.items, isHidden), pressedAfter: button.ariaPressed
        };
    });
}

// The order is off at first.
function toggles(at) {
    return ['rapids', 'drawing', 'order'].map(name => {
        const button = at.page.querySelector('[data-' + name + ']'), shapes = at.page.querySelector('.' + name);
        if (!button)
            return {name, isThere: false, hasShapes: shapes !== null};
        const is = [isHidden(shapes)];
        press(button), is.push(isHidden(shapes));
        press(button), is.push(isHidden(shapes));
        return {name, isThere: true, hidden: is};
    });
}

// Each side's button shows that side: its view lies in the picture and fills it one way.
function sides(at) {
    const whole = at.svg.getAttribute('viewBox');
    const views = all('.face,.fold', at.svg);
    return all('[data-view]', at.page).map(button => {
        press(button);
        const frame = at.svg.getBoundingClientRect();
        const fills = views.map(view => {
            const is = view.getBoundingClientRect();
            const isInside = is.left >= frame.left - 1 && is.right <= frame.right + 1 && is.top >= frame.top - 1 &&
                             is.bottom <= frame.bottom + 1;
            return isInside ? Math.max(is.width / frame.width, is.height / frame.height) : 0;
        });
        const box = at.svg.getAttribute('viewBox');
        press(all('[data-view]', at.page)[0]);
        return {name: button.textContent, isWhole: box === whole, fills};
    });
}

function strike(target, key, more = {}) {
    const event = new KeyboardEvent('keydown', {key, bubbles: true, cancelable: true, ...more});
    target.dispatchEvent(event);
    return event.defaultPrevented;
}

function keys(at) {
    const value = () => Number(at.slider.value), from = Math.max(2, Math.ceil(Number(at.slider.max) / 2));
    const first = document.querySelector('article') === at.page, is = {from};
    slideTo(at, from);
    is.right = [strike(at.page, 'ArrowRight'), value()];
    is.left = [strike(at.page, 'ArrowLeft'), value()];
    is.back = [strike(at.page, 'ArrowLeft', {altKey: true}), value()];
    is.other = [strike(at.page, 'a'), value()];
    is.inSlider = [strike(at.slider, 'ArrowRight'), value()]; // it moves by itself
    if (first)
        is.fromBody = [strike(document.body, 'ArrowRight'), value()];
    slideTo(at, 1);
    is.before = [strike(at.page, 'ArrowLeft'), value()];
    slideTo(at, Number(at.slider.max));
    is.beyond = [strike(at.page, 'ArrowRight'), value()];
    return is;
}

const later = milliseconds => new Promise(done => setTimeout(done, milliseconds));

// Begins by the key, goes on by the clock, stops by the button.
async function play(at) {
    const button = at.page.querySelector('[data-play]'), is = {};
    slideTo(at, 2);
    strike(at.page, ' ');
    is.pressed = button.ariaPressed;
    await later(450);
    is.after = Number(at.slider.value);
    press(button);
    is.stopped = button.ariaPressed;
    await later(450);
    is.still = Number(at.slider.value);
    slideTo(at, Number(at.slider.max) - 1);
    press(button);
    await later(900);
    is.atEnd = [Number(at.slider.value), button.ariaPressed];
    slideTo(at, Number(at.slider.max)), press(button);
    is.again = Number(at.slider.value);
    press(button);
    return is;
}

async function use(page) {
    const at = parts(page);
    const face = page.querySelector('.face').getBoundingClientRect(), frame = at.svg.getBoundingClientRect();
    const is = {
        face: [face.width, face.height], frame: [frame.width, frame.height], help: at.says.textContent,
        faceIsInside: face.left >= frame.left && face.right <= frame.right && face.top >= frame.top && face.bottom <= frame.bottom,
        max: Number(at.slider.max), lines: at.lines.map(line => line.textContent),
        items: at.items.map(item => ({line: lineOf(item), last: lastOf(item), says: item.querySelector('title').textContent}))
    };
    const places = [...new Set(at.items.flatMap(item => [lineOf(item), lastOf(item)]).concat(1, is.max))]
        .filter(line => line > 0); // work of a second program has none
    is.slides = spread(places, 40).map(line => slideTo(at, line));
    is.clicks = spread(at.items, 30).map(item => clickOn(at, item));
    is.besides = spread(at.items.filter(item => item.querySelector('.hole,.unknown')), 10).map(item => {
        const hole = item.querySelector('.hole,.unknown').getBoundingClientRect();
        return clickOn(at, item, hole.width / 2 + 5);
    });
    is.textClicks = spread(at.lines, 8).map(line => {
        press(line);
        return {line: at.lines.indexOf(line) + 1, ...state(at)};
    });
    is.rows = page.querySelectorAll('details tr').length - 1;
    page.querySelector('details').open = true;
    is.rowClicks = spread([...page.querySelectorAll('[data-go]')], 8).map(button => {
        press(button);
        return {line: Number(button.dataset.go), ...state(at)};
    });
    page.querySelector('details').open = false;
    slideTo(at, is.max);
    is.legend = legend(at);
    is.toggles = toggles(at);
    is.sides = sides(at);
    is.keys = keys(at);
    is.play = await play(at);
    slideTo(at, is.max);
    return is;
}
