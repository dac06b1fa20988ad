# Makes a manual page of its description: text as in docs/*.md, of which the lines
#     @include FILE: HEADING
# bring in a section, by its heading, with all below it; "@include FILE" brings in a whole file but
# for its title. Paths begin at the description's directory.
# usage: awk -v version=1.2 -v date=2026-01-31 -f page.awk DESCRIPTION > PAGE
#
# Of tables each row becomes an entry, and of pictures nothing is left.

function fail(why) {
    print FILENAME ": " why > "/dev/stderr"
    failed = 1
    exit 1
}

# What the typesetter would take for its own. A code's signs are those that are typed, and its words
# aren't parted.
function escaped(text, isCode) {
    gsub(/\\/, "\\e", text)
    if (isCode) {
        gsub(/-/, "\\-", text)
        gsub(/'/, "\\(aq", text)
        gsub(/`/, "\\(ga", text)
        gsub(/\^/, "\\(ha", text)
        gsub(/~/, "\\(ti", text)
        gsub(/[^ ]+/, "\\%&", text)
    }
    return text
}

# Puts what a pattern finds between marks of that length into a font.
function inFont(text, pattern, mark, font,    done) {
    while (match(text, pattern)) {
        done = done substr(text, 1, RSTART - 1) "\\f" font \
            substr(text, RSTART + mark, RLENGTH - 2 * mark) "\\fR"
        text = substr(text, RSTART + RLENGTH)
    }
    return done text
}

function plain(text) {
    text = escaped(text, 0)
    gsub(/ - /, " \\- ", text)
    text = inFont(text, "\\*\\*[^*]+\\*\\*", 2, "B")
    return inFont(text, "\\*[^*]+\\*", 1, "I")
}

# Links and pictures leave their texts.
function withoutLinks(text,    done, link) {
    gsub(/\[file-formats\.md\]\(file-formats\.md\)/, "**larkspin-files**(5)", text)
    while (match(text, /!?\[[^]]*\]\([^)]*\)/)) {
        link = substr(text, RSTART, RLENGTH)
        done = done substr(text, 1, RSTART - 1)
        text = substr(text, RSTART + RLENGTH)
        sub(/^!?\[/, "", link)
        sub(/\]\(.*/, "", link)
        done = done link
    }
    return done text
}

function inline(text,    done, mark, code, before, end) {
    text = withoutLinks(text)
    while (match(text, /`+/)) {
        mark = substr(text, RSTART, RLENGTH)
        before = substr(text, 1, RSTART - 1)
        text = substr(text, RSTART + RLENGTH)
        end = index(text, mark)
        if (end == 0)
            fail("a code without an end: " text)
        code = substr(text, 1, end - 1)
        text = substr(text, end + length(mark))
        if (mark == "``") # around a sign of that kind
            code = substr(code, 2, length(code) - 2)
        done = done plain(before) "\\fB" escaped(code, 1) "\\fR"
    }
    return done plain(text)
}

# The sign by which a word isn't parted counts at its beginning only.
function unparted(word) {
    return gsub(/\\%/, "", word) ? "\\%" word : word
}

# Lines that the typesetter fills again; none may look like a request of its own.
function fill(text,    words, count, i, line) {
    count = split(text, words, / +/)
    for (i = 1; i <= count; i++) {
        words[i] = unparted(words[i])
        if (line != "" && length(line) + length(words[i]) > 78) {
            print line
            line = ""
        }
        if (line == "")
            line = (words[i] ~ /^[.']/ ? "\\&" : "") words[i]
        else
            line = line " " words[i]
    }
    print line
}

# A heading is followed by its first paragraph as it is.
function begin() {
    if (!isFresh)
        print ".PP"
}

function isPicture(text) {
    return text ~ /^!\[[^]]*\]\([^)]*\)$/
}

function endParagraph() {
    if (paragraph != "" && !isPicture(paragraph)) {
        if (item)
            print ".IP \\(bu 2"
        else
            begin()
        fill(inline(paragraph))
        isFresh = 0
    }
    paragraph = ""
    item = 0
}

function cell(text) {
    gsub(/^ +| +$/, "", text)
    return text
}

function tagOf(text,    words, count, i) {
    count = split(text ~ /`/ ? inline(text) : "\\fB" inline(text) "\\fR", words, / /)
    text = unparted(words[1])
    for (i = 2; i <= count; i++)
        text = text " " unparted(words[i])
    return text
}

function row(line,    cells, count, tag) {
    count = split(line, cells, /\|/)
    if (line ~ /^\|[ |-]+$/)
        return
    if (!isInTable) {
        isInTable = 1
        header = cell(cells[4])
        return
    }
    tag = cell(cells[2])
    if (isPicture(tag) && isPicture(cell(cells[3])))
        return
    print ".TP"
    print tagOf(tag)
    fill(cell(cells[3]) == "" ? "\\&" : inline(cell(cells[3])))
    if (count > 4 && cell(cells[4]) != "") {
        print ".br"
        fill("\\fI" header ":\\fR " inline(cell(cells[4])))
    }
    isFresh = 0
}

function beginCode() {
    endParagraph()
    begin()
    print ".RS 4\n.nf"
    isInCode = 1
}

function endCode() {
    print ".fi\n.RE"
    isInCode = 0
    isFresh = 0
}

function showCode(line) {
    line = escaped(line, 1)
    gsub(/\\%/, "", line)
    print (line ~ /^[.']/ ? "\\&" : "") line
}

function heading(line,    level) {
    level = index(line, " ") - 1
    line = substr(line, level + 2)
    if (level == 2 && line !~ /\./) # names of files stay
        line = toupper(line)
    line = inline(line)
    gsub(/"/, "\\(dq", line)
    print (level == 2 ? ".SH" : ".SS") " \"" line "\""
    isFresh = 1
}

function take(line) {
    if (isFenced && line !~ /^```/)
        return showCode(line)
    if (line ~ /^```/) {
        isFenced = !isFenced
        if (isFenced)
            beginCode()
        else
            endCode()
        return
    }
    if (isInCode && line !~ /^    /)
        endCode()
    if (line !~ /^\|/)
        isInTable = 0
    if (line ~ /^##+ /) {
        endParagraph()
        heading(line)
    } else if (line ~ /^    / && paragraph == "") {
        if (!isInCode)
            beginCode()
        showCode(substr(line, 5))
    } else if (line ~ /^\|/) {
        endParagraph()
        row(line)
    } else if (line == "") {
        endParagraph()
    } else {
        if (line ~ /^- /) {
            endParagraph()
            item = 1
            line = substr(line, 3)
        }
        sub(/^ +/, "", line)
        paragraph = paragraph (paragraph == "" ? "" : " ") line
    }
}

function include(words,    file, title, line, level, found, isCode) {
    file = words
    title = ""
    if (match(words, /: /)) {
        file = substr(words, 1, RSTART - 1)
        title = substr(words, RSTART + 2)
    }
    if (FILENAME ~ /\//) {
        line = FILENAME
        sub(/[^\/]*$/, "", line)
        file = line file
    }
    level = 0
    found = title == ""
    while ((getline line < file) > 0) {
        if (line ~ /^```/)
            isCode = !isCode
        if (!isCode && line ~ /^#+ /) {
            if (level && index(line, " ") - 1 <= level)
                break
            if (title != "" && !level && line ~ /^##+ / && substr(line, index(line, " ") + 1) == title) {
                level = index(line, " ") - 1
                found = 1
            }
            if (line ~ /^# /)
                continue
        }
        if (title == "" || level)
            take(line)
    }
    close(file)
    endParagraph()
    if (!found)
        fail("no \"" title "\" in " file)
}

/^# / {
    name = substr($2, 1, index($2, "(") - 1)
    section = substr($2, index($2, "(") + 1, 1)
    print ".TH " toupper(name) " " section " " date " \"larkspin " version "\" \"larkspin\""
    next
}
/^@include / {
    endParagraph()
    include(substr($0, 10))
    next
}
{ take($0) }
END {
    if (failed)
        exit 1
    endParagraph()
    if (isInCode)
        endCode()
}
