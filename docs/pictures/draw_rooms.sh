#!/bin/sh
# Draws the rooms and floors of src/ from its includes, as SVG to standard output; rooms.svg is made by
#     docs/pictures/draw_rooms.sh >docs/pictures/rooms.svg
# The floors come from the table in tests/floors_test.cpp, the words in the boxes from below.
# Another tree than this one: its folder as argument.
set -eu
LC_ALL=C
export LC_ALL
cd "${1:-$(dirname "$0")/../..}"

find src -type f \( -name '*.h' -o -name '*.cpp' \) | sort | awk '
BEGIN {
    words["platform"] = "text, numbers, paths, files, processes"
    words["state"] = "records, run, settings, report"
    words["geometry"] = "angles, point grid"
    words["drawing"] = "from a DXF file to records"
    words["import"] = "drawings as they come"
    words["routes"] = "order, links, pockets, depths, sides, leads"
    words["drilling"] = "tour, grooves, edge bores, drill head"
    words["writers"] = "programs, index, notes, cut list"
    words["machine"] = "programs read back as steps"
    words["proof"] = "drawing against programs"
    words["scene"] = "pictures of programs"
    words["ledger"] = "what became of each entity"
    words["job"] = "the order of all passes"
    words["toolchain"] = "viewers, binaries"
    words["shell"] = "unattended mode, file list, rules of windows"
    words["console"] = "the korvanti command"
    words["window"] = "the forms of KV90WIN"

    # What nearly every room includes: told by number, since arrows would hide all others.
    common["platform"] = common["state"] = 1

    colors = split("#1f5fa8 #b0451b #2e7d4f #946c00 #7a3f9d #0f7f86 #a8285f #3d4852 #c0392b #4b4fc4", color, " ")
    width = 1270; left = 112; right = width - 20 # of the picture; what lies between holds the boxes
    read_floors("tests/floors_test.cpp")
}

# One source file: counts it, and what it includes of other rooms.
{
    parts = split($0, part, "/")
    if (parts < 3)
        fail($0 " is in no room")
    room = part[2]
    enter(room)
    files[room]++
    if (parts > 3) {
        if (!((room, part[3]) in inner_files))
            inner_name[room, ++inners[room]] = part[3]
        inner_files[room, part[3]]++
    }
    while ((getline line < $0) > 0) {
        if (!match(line, /^[ \t]*#[ \t]*include[ \t]*"[^"\/]+\//))
            continue
        other = substr(line, 1, RLENGTH - 1)
        sub(/^[^"]*"/, "", other)
        enter(other)
        if (other != room)
            includes[room, other]++
    }
    close($0)
}

END {
    if (failed)
        exit 1
    if (rooms == 0)
        fail("no source files below src/")
    make_levels()
    make_arrows()
    measure_boxes()
    order_items()
    spread_ports()
    place_items()
    stack_levels()
    draw()
}

function fail(text) {
    print "draw_rooms.sh: " text >"/dev/stderr"
    failed = 1
    exit 1
}

function enter(room) {
    if (room in known)
        return
    if (!(room in floor_of))
        fail("src/" room "/ has no floor in tests/floors_test.cpp")
    known[room] = 1
    name[++rooms] = room # rooms are the first items
}

# Rows such as {"state/", 2}, of the table named Floors alone.
function read_floors(file,    line, row, slash, inside) {
    while ((getline line <file) > 0) {
        if (line ~ /FloorRow Floors\[\] = /)
            inside = 1
        else if (line ~ /^};/)
            inside = 0
        while (inside && match(line, /[{]"[^"\/]+\/", *[0-9]+[}]/)) {
            row = substr(line, RSTART + 2, RLENGTH - 3)
            line = substr(line, RSTART + RLENGTH)
            slash = index(row, "/")
            floor_of[substr(row, 1, slash - 1)] = substr(row, slash + 3) + 0
            if (substr(row, slash + 3) + 0 > highest)
                highest = substr(row, slash + 3) + 0
        }
    }
    close(file)
    if (highest == 0)
        fail("no table of floors in " file)
}

# Levels are the floors that have rooms, from the ground. Each level is a row of items: rooms, and
# places where an arrow passes by. at[level, n] is the item at place n, place[item] is n.
function make_levels(    number, i) {
    for (number = 0; number <= highest; number++) {
        for (i = 1; i <= rooms; i++) {
            if (floor_of[name[i]] != number)
                continue
            if (levels == 0 || floor_number[levels] != number)
                floor_number[++levels] = number
            add_item(i, levels)
        }
    }
    items = rooms
}

function add_item(item, on) {
    level[item] = on
    place[item] = ++count[on]
    at[on, count[on]] = item
}

# An arrow is a chain of pieces, each from a level to the next one below.
function make_arrows(    from, to, number) {
    for (from = 1; from <= rooms; from++) {
        for (to = 1; to <= rooms; to++) {
            number = includes[name[from], name[to]] + 0
            if (number == 0)
                continue
            if (level[from] <= level[to])
                fail("src/" name[from] "/ includes src/" name[to] "/, which is not on a lower floor")
            if (name[to] in common) {
                common_rooms[to]++
                common_includes[to] += number
            } else
                add_arrow(from, to, number)
        }
    }
}

function add_arrow(from, to, number,    above, on) {
    above = from
    for (on = level[from] - 1; on > level[to]; on--) {
        add_item(++items, on)
        add_piece(above, items, from, number)
        above = items
        number = 0 # stands at the first piece alone
    }
    add_piece(above, to, from, number)
}

function add_piece(from, to, owner, number) {
    upper[++pieces] = from
    lower[pieces] = to
    owner_of[pieces] = owner
    number_of[pieces] = number
    crossed[level[to]] = 1
}

# Width and height of each box, and the lines of its words.
function measure_boxes(    i, k, wide, need, text) {
    for (i = 1; i <= rooms; i++) {
        wide[i] = (name[i] in common) && count[level[i]] == 1
        wrap(i, words[name[i]], wide[i] ? 90 : 34)
        if (common_rooms[i] > 0)
            text_line[i, ++text_lines[i]] = "included " common_includes[i] " times, by " common_rooms[i] " rooms"
        need = 10 * length(name[i]) + 7 * length(file_count(files[name[i]])) + 14
        for (k = 1; k <= text_lines[i]; k++)
            need = greater(need, 7 * length(text_line[i, k]))
        text = -10
        for (k = 1; k <= inners[name[i]]; k++)
            text += inner_width(i, k) + 10
        box_width[i] = wide[i] ? right - left : greater(130, greater(need, text) + 24)
        box_height[i] = 32 + 16 * text_lines[i] + (inners[name[i]] > 0 ? 34 : 0)
        level_height[level[i]] = greater(level_height[level[i]], box_height[i])
    }
    for (i = rooms + 1; i <= items; i++)
        box_width[i] = 10
}

function greater(a, b) { return a > b ? a : b }

function lesser(a, b) { return a < b ? a : b }

function file_count(number) { return number + 0 == 1 ? "1 file" : number + 0 " files" }

function inner_text(i, k) { return inner_name[name[i], k] ", " file_count(inner_files[name[i], inner_name[name[i], k]]) }

function inner_width(i, k) { return 7 * length(inner_text(i, k)) + 16 }

# Breaks behind commas.
function wrap(i, text, longest,    word, n, k, line) {
    n = split(text, word, ", ")
    for (k = 1; k <= n; k++) {
        if (line != "" && length(line ", " word[k]) > longest) {
            text_line[i, ++text_lines[i]] = line ","
            line = ""
        }
        line = line (line == "" ? "" : ", ") word[k]
    }
    if (line != "")
        text_line[i, ++text_lines[i]] = line
}

# Order within the levels: an item moves to another place of its level while that takes crossings away,
# or shortens the arrows without a new crossing.
function order_items(    best, now, on, from, to, better) {
    best = tangle()
    do {
        better = 0
        for (on = 1; on <= levels; on++) {
            for (from = 1; from <= count[on]; from++) {
                for (to = 1; to <= count[on]; to++) {
                    if (from == to)
                        continue
                    move(on, from, to)
                    now = tangle()
                    if (now < best) {
                        best = now
                        better = 1
                    } else
                        move(on, to, from)
                }
            }
        }
    } while (better)
}

function move(on, from, to,    item, step, n) {
    item = at[on, from]
    step = from < to ? 1 : -1
    for (n = from; n != to; n += step)
        put(on, n, at[on, n + step])
    put(on, to, item)
}

function put(on, n, item) {
    at[on, n] = item
    place[item] = n
}

function tangle(    p, q, sum, a, b) {
    for (p = 1; p <= pieces; p++) {
        a = upper[p]
        b = lower[p]
        for (q = p + 1; q <= pieces; q++)
            if (level[a] == level[upper[q]] && (place[a] - place[upper[q]]) * (place[b] - place[lower[q]]) < 0)
                sum += 10000
        # Places as thousandths of the level, so that levels with few and many items compare.
        a = int(1000 * (2 * place[a] - 1) / (2 * count[level[a]]))
        b = int(1000 * (2 * place[b] - 1) / (2 * count[level[b]]))
        sum += a > b ? a - b : b - a
    }
    return sum + 0
}

# Where the pieces leave and reach their boxes, as way from the middle of the box, in the order of the
# items at the other ends.
function spread_ports(    p, q, out, outs, into, intos) {
    for (p = 1; p <= pieces; p++) {
        out = outs = into = intos = 0
        for (q = 1; q <= pieces; q++) {
            if (upper[q] == upper[p]) {
                outs++
                out += place[lower[q]] < place[lower[p]]
            }
            if (lower[q] == lower[p]) {
                intos++
                into += place[upper[q]] < place[upper[p]]
            }
        }
        leave[p] = port(out, outs, box_width[upper[p]])
        reach[p] = port(into, intos, box_width[lower[p]])
    }
}

function port(n, ports, room,    step) {
    step = int((room - 20) / ports)
    return int((2 * n - ports + 1) * (step < 32 ? step : 32) / 2)
}

# Moves the items of each level to where their arrows are straight, as far as their order and the width
# of the picture let them.
function place_items(    on, n, round, shift, low, high) {
    for (on = 1; on <= levels; on++)
        for (n = 1; n <= count[on]; n++)
            x[at[on, n]] = int(left + (right - left) * (2 * n - 1) / (2 * count[on]))
    for (round = 1; round <= 200; round++) {
        for (on = 1; on <= levels; on++)
            place_level(on)
        for (on = levels; on >= 1; on--)
            place_level(on)
    }
    # All together to the middle, but for the boxes of the full width.
    low = right
    for (n = 1; n <= items; n++) {
        if (box_width[n] == right - left)
            continue
        low = lesser(low, x[n] - int(box_width[n] / 2))
        high = greater(high, x[n] + int(box_width[n] / 2))
    }
    shift = int((left + right - low - high) / 2)
    for (n = 1; n <= items; n++)
        if (box_width[n] < right - left)
            x[n] += shift
}

# Items that want to overlap stand side by side as one group, about the mean of what they want.
function place_level(on,    n, item, way, groups, sum, weight, first, g, low, high) {
    for (n = 1; n <= count[on]; n++) {
        item = at[on, n]
        way = n == 1 ? 0 : way + distance(at[on, n - 1], item)
        offset[n] = way
        wish(item)
        groups++
        first[groups] = n
        weight[groups] = wish_weight
        sum[groups] = wish_weight * (wish_x - way)
        while (groups > 1 && sum[groups - 1] / weight[groups - 1] > sum[groups] / weight[groups]) {
            sum[groups - 1] += sum[groups]
            weight[groups - 1] += weight[groups]
            groups--
        }
    }
    first[groups + 1] = count[on] + 1
    low = left + int(box_width[at[on, 1]] / 2)
    high = right - int(box_width[item] / 2) - way
    for (g = 1; g <= groups; g++) {
        for (n = first[g]; n < first[g + 1]; n++) {
            x[at[on, n]] = int(sum[g] / weight[g] + 0.5)
            if (x[at[on, n]] > high)
                x[at[on, n]] = high
            if (x[at[on, n]] < low)
                x[at[on, n]] = low
            x[at[on, n]] += offset[n]
        }
    }
}

function distance(a, b) { return int((box_width[a] + box_width[b]) / 2) + 22 }

function wish(item,    p, pull) {
    wish_x = wish_weight = 0
    for (p = 1; p <= pieces; p++) {
        # A bend where an arrow only passes by looks worst.
        pull = upper[p] > rooms && lower[p] > rooms ? 100 : 1
        if (upper[p] == item) {
            wish_x += pull * (x[lower[p]] + reach[p] - leave[p])
            wish_weight += pull
        }
        if (lower[p] == item) {
            wish_x += pull * (x[upper[p]] + leave[p] - reach[p])
            wish_weight += pull
        }
    }
    if (wish_weight == 0) {
        wish_x = x[item]
        wish_weight = 1
    }
    wish_x /= wish_weight
}

# Heights: top[level] of its boxes, band_top[level] of its band.
function stack_levels(    on) {
    height = 96
    for (on = levels; on >= 1; on--) {
        band_top[on] = height
        top[on] = height + half_gap(on)
        height = top[on] + level_height[on] + half_gap(on - 1)
    }
    band_top[0] = height
    height += 20
}

# Between a level and the one above it.
function half_gap(below) { return below in crossed ? 32 : 12 }

function draw(    on, i, p) {
    printf "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 %d %d\" width=\"%d\" height=\"%d\"", width, height, width, height
    print " font-family=\"Helvetica, Arial, sans-serif\" font-size=\"12\">"
    print "<!-- Made by docs/pictures/draw_rooms.sh from the includes of src/. -->"
    print "<title>Rooms and floors of the source</title>"
    printf "<rect width=\"%d\" height=\"%d\" fill=\"#ffffff\"/>\n", width, height
    print "<text x=\"20\" y=\"34\" font-size=\"20\" font-weight=\"bold\" fill=\"#222222\">Rooms and floors of src/</text>"
    print "<g fill=\"#444444\">"
    print "<text x=\"20\" y=\"58\">A room includes only rooms of lower floors. An arrow leads to a room that is included; its number is that of the includes.</text>"
    print "<text x=\"20\" y=\"76\">" common_note() "</text>"
    print "</g>"
    for (on = levels; on >= 1; on--)
        draw_band(on)
    for (p = 1; p <= pieces; p++)
        draw_piece(p)
    for (p = 1; p <= pieces; p++)
        draw_number(p)
    for (i = 1; i <= rooms; i++)
        draw_box(i)
    print "</svg>"
}

function common_note(    i, names) {
    for (i = 1; i <= rooms; i++)
        if (common_rooms[i] > 0)
            names = names (names == "" ? "" : " and ") name[i]
    return names == "" ? "" : "Arrows to " names ", which nearly all include, are left out."
}

function draw_band(on) {
    printf "<rect x=\"0\" y=\"%d\" width=\"%d\" height=\"%d\" fill=\"%s\"/>\n", band_top[on], width, band_top[on - 1] - band_top[on], on % 2 ? "#e9eef4" : "#f5f7fa"
    printf "<text x=\"20\" y=\"%d\" font-size=\"18\" font-weight=\"bold\" fill=\"#66727f\">Floor %d</text>\n", top[on] + int(level_height[on] / 2) + 6, floor_number[on]
}

function arrow_color(p) { return color_of(owner_of[p]) }

# Each room has the color of its arrows; those that arrows leave out are grey.
function color_of(i,    k, n) {
    if (name[i] in common)
        return "#66727f"
    for (k = 1; k < i; k++)
        n += !(name[k] in common)
    return color[n % colors + 1]
}

function draw_piece(p,    x1, y1, x2, y2, bend, end) {
    x1 = x[upper[p]] + leave[p]
    x2 = x[lower[p]] + reach[p]
    y1 = top[level[upper[p]]] + (upper[p] <= rooms ? box_height[upper[p]] : level_height[level[upper[p]]])
    y2 = top[level[lower[p]]]
    # Straight beside the boxes, bent between the levels only.
    bend = top[level[upper[p]]] + level_height[level[upper[p]]]
    end = lower[p] <= rooms ? y2 - 7 : y2 + level_height[level[lower[p]]]
    printf "<path d=\"M%d,%d V%d C%d,%d %d,%d %d,%d V%d\" fill=\"none\" stroke=\"%s\" stroke-width=\"1.6\"/>\n", x1, y1, bend + 12, x1, bend + 44, x2, y2 - 44, x2, y2 - 8, end, arrow_color(p)
    if (lower[p] <= rooms)
        printf "<path d=\"M%d,%d l-4,-9 h8 z\" fill=\"%s\"/>\n", x2, y2, arrow_color(p)
}

function draw_number(p,    x1, y1, wide) {
    if (number_of[p] == 0)
        return
    x1 = x[upper[p]] + leave[p]
    y1 = top[level[upper[p]]] + box_height[upper[p]] + 6
    wide = 8 + 7 * length(number_of[p] "")
    printf "<rect x=\"%d\" y=\"%d\" width=\"%d\" height=\"15\" rx=\"4\" fill=\"#ffffff\" stroke=\"%s\"/>\n", x1 - int(wide / 2), y1, wide, arrow_color(p)
    printf "<text x=\"%d\" y=\"%d\" font-size=\"11\" text-anchor=\"middle\" fill=\"#222222\">%d</text>\n", x1, y1 + 11, number_of[p]
}

function draw_box(i,    x1, y1, k, inner) {
    x1 = x[i] - int(box_width[i] / 2)
    y1 = top[level[i]]
    printf "<rect x=\"%d\" y=\"%d\" width=\"%d\" height=\"%d\" rx=\"5\" fill=\"#ffffff\" stroke=\"%s\" stroke-width=\"1.6\"/>\n", x1, y1, box_width[i], box_height[i], color_of(i)
    printf "<text x=\"%d\" y=\"%d\" font-size=\"15\" font-weight=\"bold\" fill=\"#111111\">%s</text>\n", x1 + 12, y1 + 21, name[i]
    printf "<text x=\"%d\" y=\"%d\" text-anchor=\"end\" fill=\"#66727f\">%s</text>\n", x1 + box_width[i] - 12, y1 + 21, file_count(files[name[i]])
    for (k = 1; k <= text_lines[i]; k++)
        printf "<text x=\"%d\" y=\"%d\" fill=\"#333333\">%s</text>\n", x1 + 12, y1 + 23 + 16 * k, text_line[i, k]
    inner = x1 + 12
    y1 += 33 + 16 * text_lines[i]
    for (k = 1; k <= inners[name[i]]; k++) {
        printf "<rect x=\"%d\" y=\"%d\" width=\"%d\" height=\"23\" rx=\"3\" fill=\"#f5f7fa\" stroke=\"#8a96a3\"/>\n", inner, y1, inner_width(i, k)
        printf "<text x=\"%d\" y=\"%d\" text-anchor=\"middle\" fill=\"#333333\">%s</text>\n", inner + int(inner_width(i, k) / 2), y1 + 16, inner_text(i, k)
        inner += inner_width(i, k) + 10
    }
}
'
