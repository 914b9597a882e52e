"""A small reader and writer of gettext catalogs (msgctxt, msgid, msgstr, comments)."""
import re


def _escape(s):
    return s.replace('\\', '\\\\').replace('"', '\\"').replace('\n', '\\n').replace('\r', '\\r').replace('\t', '\\t')


def _unescape(s):
    return re.sub(r'\\(.)', lambda m: {'n': '\n', 'r': '\r', 't': '\t'}.get(m.group(1), m.group(1)), s)


class Entry:
    def __init__(self, ctx, msgid, msgstr="", refs=None, comments=None, flags=None):
        self.ctx, self.msgid, self.msgstr = ctx, msgid, msgstr
        self.refs = refs or []
        self.comments = comments or []      # translator comments ("# ...")
        self.flags = flags or []

    @property
    def key(self):
        return (self.ctx, self.msgid)


def _field(name, value):
    if '\n' in value and len(value) > 1:
        parts = value.split('\n')
        lines = [p + '\n' for p in parts[:-1]] + ([parts[-1]] if parts[-1] else [])
        return '%s ""\n' % name + "".join('"%s"\n' % _escape(p) for p in lines)
    return '%s "%s"\n' % (name, _escape(value))


def write(path, header, entries):
    out = ['msgid ""\nmsgstr ""\n']
    out += ['"%s\\n"\n' % _escape(h) for h in header]
    for e in entries:
        out.append("\n")
        out += ["# %s\n" % c for c in e.comments]
        if e.refs:
            out.append("#: %s\n" % " ".join(e.refs))
        if e.flags:
            out.append("#, %s\n" % ", ".join(e.flags))
        out.append(_field("msgctxt", e.ctx))
        out.append(_field("msgid", e.msgid))
        out.append(_field("msgstr", e.msgstr))
    with open(path, "w", encoding="utf-8", newline="\n") as f:
        f.write("".join(out))


def read(path):
    """Returns (header lines, entries); the header entry (empty msgid, no context) is left out."""
    entries, header = [], []
    cur, field, comments, refs, flags = {}, None, [], [], []

    def flush():
        nonlocal cur, comments, refs, flags
        if "msgid" in cur:
            if cur["msgid"] == "" and "msgctxt" not in cur:
                header.extend(l for l in cur.get("msgstr", "").split("\n") if l)
            else:
                entries.append(Entry(cur.get("msgctxt", ""), cur["msgid"], cur.get("msgstr", ""), refs, comments, flags))
        cur, comments, refs, flags = {}, [], [], []

    with open(path, encoding="utf-8") as f:
        for raw in f:
            line = raw.strip()
            if not line:
                continue
            if line.startswith("#"):
                if "msgid" in cur:
                    flush()
                if line.startswith("#:"):
                    refs += line[2:].split()
                elif line.startswith("#,"):
                    flags += [x.strip() for x in line[2:].split(",")]
                elif line.startswith("# ") or line == "#":
                    comments.append(line[2:])
                continue
            m = re.match(r'(msgctxt|msgid|msgstr)\s+"(.*)"$', line)
            if m:
                if m.group(1) in ("msgctxt", "msgid") and "msgid" in cur and m.group(1) in cur or \
                        (m.group(1) == "msgctxt" and "msgid" in cur):
                    flush()
                field = m.group(1)
                cur[field] = _unescape(m.group(2))
                continue
            m = re.match(r'"(.*)"$', line)
            if m and field:
                cur[field] += _unescape(m.group(1))
                continue
            raise ValueError("%s: line not understood: %s" % (path, line))
    flush()
    return header, entries
