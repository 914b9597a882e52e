"""Reading and writing the dialog templates of resource scripts.

Only what the project's templates use is understood: DIALOGEX blocks with
STYLE, EXSTYLE, CAPTION and FONT, the usual control keywords and CONTROL, and
statements that go on over lines ending in ',' or '|'.
"""
import re

# Keywords whose first argument is the control's text.
TEXT_CONTROLS = {
    "LTEXT", "RTEXT", "CTEXT", "PUSHBUTTON", "DEFPUSHBUTTON", "PUSHBOX", "CHECKBOX", "AUTOCHECKBOX",
    "RADIOBUTTON", "AUTORADIOBUTTON", "STATE3", "AUTO3STATE", "GROUPBOX", "ICON",
}
# Keywords without a text: id, x, y, w, h, ...
PLAIN_CONTROLS = {"EDITTEXT", "COMBOBOX", "LISTBOX", "SCROLLBAR"}


def split_args(s):
    """Splits at top-level commas; string literals stay whole."""
    out, cur, i, n = [], "", 0, len(s)
    while i < n:
        c = s[i]
        if c == '"':
            j = i + 1
            while j < n:
                if s[j] == '"' and j + 1 < n and s[j + 1] == '"':
                    j += 2
                    continue
                if s[j] == '\\':
                    j += 2
                    continue
                if s[j] == '"':
                    break
                j += 1
            cur += s[i:j + 1]
            i = j + 1
            continue
        if c == ',':
            out.append(cur.strip())
            cur = ""
        else:
            cur += c
        i += 1
    out.append(cur.strip())
    return out


def unquote(tok):
    """The text of an rc string literal (doubled quotes and C escapes)."""
    tok = tok.strip()
    if not (tok.startswith('"') and tok.endswith('"')):
        raise ValueError("not a string literal: " + tok)
    body, out, i = tok[1:-1], [], 0
    while i < len(body):
        c = body[i]
        if c == '"' and body[i + 1:i + 2] == '"':
            out.append('"')
            i += 2
        elif c == '\\' and i + 1 < len(body):
            d = body[i + 1]
            if d in "01234567":
                m = re.match(r"[0-7]{1,3}", body[i + 1:])
                out.append(chr(int(m.group(0), 8)))
                i += 1 + len(m.group(0))
                continue
            if d == 'x':
                m = re.match(r"[0-9a-fA-F]{1,4}", body[i + 2:])
                out.append(chr(int(m.group(0), 16)))
                i += 2 + len(m.group(0))
                continue
            out.append({'n': '\n', 'r': '\r', 't': '\t', '\\': '\\', 'a': '\a'}.get(d, d))
            i += 2
        else:
            out.append(c)
            i += 1
    return "".join(out)


def quote(text):
    """An rc string literal for text (UTF-8 source)."""
    t = text.replace('\\', '\\\\').replace('"', '""').replace('\r', '\\r').replace('\n', '\\n').replace('\t', '\\t')
    return '"' + t + '"'


class Control:
    def __init__(self, keyword, args):
        self.keyword = keyword
        self.args = args            # raw argument tokens

    @property
    def has_text(self):
        return self.keyword in TEXT_CONTROLS or self.keyword == "CONTROL"

    @property
    def shows_text(self):
        """False for icons and pictures, whose "text" names a resource."""
        if self.keyword == "ICON":
            return False
        return self.has_text and not any(f in self.style for f in ("SS_ICON", "SS_BITMAP", "BS_ICON", "BS_BITMAP"))

    @property
    def text(self):
        return unquote(self.args[0]) if self.has_text else None

    def set_text(self, text):
        self.args[0] = quote(text)

    def _geo_index(self):
        if self.keyword == "CONTROL":
            return 4
        return 2 if self.has_text else 1

    @property
    def id(self):
        return self.args[1] if self.has_text else self.args[0]

    @property
    def klass(self):
        if self.keyword == "CONTROL":
            return unquote(self.args[2]) if self.args[2].startswith('"') else self.args[2]
        return self.keyword

    @property
    def style(self):
        if self.keyword == "CONTROL":
            return self.args[3]
        g = self._geo_index()
        return self.args[g + 4] if len(self.args) > g + 4 else ""

    @property
    def rect(self):
        g = self._geo_index()
        return [int(self.args[g + k]) for k in range(4)]

    def set_rect(self, r):
        g = self._geo_index()
        for k in range(4):
            self.args[g + k] = str(r[k])

    def render(self):
        return "    %s %s" % (self.keyword, ", ".join(self.args))


class Dialog:
    def __init__(self, name, kind, rect, language):
        self.name, self.kind, self.rect, self.language = name, kind, rect, language
        self.style = self.exstyle = self.caption = None
        self.font = None            # (size, face, rest)
        self.controls = []
        self.comments = []

    def render(self, language_line, font=None):
        size, face, rest = font or self.font
        lines = list(self.comments)
        lines.append(language_line)
        lines.append("%s %s %s" % (self.name, self.kind, ", ".join(str(v) for v in self.rect)))
        lines.append("STYLE " + self.style)
        if self.exstyle:
            lines.append("EXSTYLE " + self.exstyle)
        if self.caption is not None:
            lines.append("CAPTION " + quote(self.caption))
        lines.append("FONT %s, %s%s" % (size, quote(face), (", " + rest) if rest else ""))
        lines.append("BEGIN")
        lines.extend(c.render() for c in self.controls)
        lines.append("END")
        return "\n".join(lines) + "\n"


def _statements(lines):
    """Joins continued lines; yields (statement, comments-before)."""
    buf, comments = "", []
    for raw in lines:
        line = raw.rstrip()
        stripped = line.strip()
        if not buf and (stripped.startswith("//") or not stripped):
            if stripped.startswith("//"):
                comments.append(stripped)
            else:
                comments = []
            continue
        buf = (buf + " " + stripped) if buf else stripped
        if buf.endswith(",") or buf.endswith("|"):
            continue
        yield buf, comments
        buf, comments = "", []
    if buf:
        yield buf, comments


def parse(text):
    """Returns (includes, dialogs) of a resource script."""
    includes, dialogs = [], []
    language = None
    cur = None
    for st, comments in _statements(text.splitlines()):
        word = st.split(None, 1)[0]
        rest = st[len(word):].strip()
        if word == "#include":
            includes.append(st)
            continue
        if word.startswith("#"):
            continue
        if cur is None:
            if word == "LANGUAGE":
                language = tuple(a.strip() for a in rest.split(","))
                continue
            m = re.match(r"(\w+)\s+(DIALOGEX|DIALOG)\s+(.*)$", st)
            if m:
                cur = Dialog(m.group(1), m.group(2), [int(v) for v in split_args(m.group(3))], language)
                cur.comments = [c for c in comments]
            continue
        if word == "STYLE":
            cur.style = rest
        elif word == "EXSTYLE":
            cur.exstyle = rest
        elif word == "CAPTION":
            cur.caption = unquote(rest)
        elif word == "FONT":
            a = split_args(rest)
            cur.font = (a[0], unquote(a[1]), ", ".join(a[2:]))
        elif word == "BEGIN":
            pass
        elif word == "END":
            dialogs.append(cur)
            cur = None
        elif word in TEXT_CONTROLS or word in PLAIN_CONTROLS or word == "CONTROL":
            cur.controls.append(Control(word, split_args(rest)))
        else:
            raise ValueError("%s: statement not understood: %s" % (cur.name, st))
    return includes, dialogs
