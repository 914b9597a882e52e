#!/usr/bin/env python3
"""Collects every translatable text into the catalog template and the English catalog.

  tools/i18n/extract.py [--check]

Two kinds of texts:
- template texts: the caption and the control texts of every dialog in the
  English templates (resources/*.rc), one message context per template;
- runtime texts: the string literals at the call sites of the translation
  functions in src/, platform/src/ and sim/, under the context they are looked
  up in, and the texts the reference driver hands to the controls, which the
  controls look up under "inputsetupcontrols".

Writes resources/translations/messages.pot and en.po (msgstr = msgid). Every
other language's catalog is brought in line with the template: new entries are
added empty (which the tests then report), vanished ones are dropped.
--check writes nothing and fails when a file would change.
"""
import os
import re
import sys

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import po        # noqa: E402
import rcparse   # noqa: E402
import langs     # noqa: E402

ROOT = os.path.abspath(os.path.join(os.path.dirname(__file__), "..", ".."))
TRANSLATIONS = os.path.join(ROOT, "resources", "translations")
# Texts the code marks as names that keep their English form.
NOT_TRANSLATED = "<- !don't_translate!)"

# Names of the functions (and local helpers) that translate their literal arguments.
CALLS = r"\b(ZX_GetTranslation|GetTranslation|Tr)\s*\("
# Per file: further helpers whose literal arguments are translated by the callee.
EXTRA_CALLS = {
    "src/common/capturebutton_win.cpp": [r"\badd\s*\("],
}
# Per file: arrays of texts translated element by element.
ARRAYS = {
    "src/selection/cameraselection_win.cpp": [r"\btitles\[\]\s*=\s*\{"],
}
# Contexts of files whose lookups do not name a kSource of their own.
FILE_CONTEXTS = {
    "src/inputsetup/": ["inputsetupcontrols"],
    # The command menu is shared by both hosts; each passes its own context.
    "src/setupui/commandmenu_win.cpp": ["grabberuibase", "grabberguielementbase"],
}
# Driver data that the controls translate (context "inputsetupcontrols").
DRIVER_FILES = ["sim/camera_properties.cpp", "sim/camera_formats.cpp", "sim/camera_commands.cpp"]
DRIVER_CONTEXT = "inputsetupcontrols"


def cpp_literal(tok):
    body = tok[2:-1]
    return re.sub(r'\\(u[0-9a-fA-F]{4}|x[0-9a-fA-F]+|[0-7]{1,3}|.)',
                  lambda m: _esc(m.group(1)), body)


def _esc(e):
    if e[0] == 'u' or (e[0] == 'x' and len(e) > 1):
        return chr(int(e[1:], 16))
    if e[0] in "01234567":
        return chr(int(e, 8))
    return {'n': '\n', 'r': '\r', 't': '\t'}.get(e, e)


LIT = r'L"(?:[^"\\]|\\.)*"'


def span(src, start):
    """The text from an opening bracket at start-1 to its closing one."""
    depth, i = 1, start
    opening, closing = src[start - 1], {"(": ")", "{": "}"}[src[start - 1]]
    while i < len(src) and depth:
        c = src[i]
        if c == '"':
            m = re.match(r'"(?:[^"\\]|\\.)*"', src[i:])
            i += len(m.group(0))
            continue
        if c == opening:
            depth += 1
        elif c == closing:
            depth -= 1
        i += 1
    return src[start:i - 1]


def file_contexts(rel, src):
    for prefix, ctxs in FILE_CONTEXTS.items():
        if rel.startswith(prefix):
            return ctxs
    m = re.search(r'kSource\[\]\s*=\s*L?"([^"]+)"', src)
    return [m.group(1)] if m else []


def code_texts():
    """(context, text) -> references, from the call sites. A reference names the
    file only: line numbers would put every catalog out of date with each edit
    above a call site."""
    found = {}

    def add(ctx, text, ref):
        if text and NOT_TRANSLATED not in text:
            refs = found.setdefault((ctx, text), [])
            if ref not in refs:
                refs.append(ref)

    for top in ("src", "platform/src", "sim", "genicam", "tools/zxsetup"):
        for dirpath, _, files in os.walk(os.path.join(ROOT, top)):
            for fn in sorted(files):
                if not fn.endswith((".cpp", ".h")):
                    continue
                rel = os.path.relpath(os.path.join(dirpath, fn), ROOT)
                with open(os.path.join(ROOT, rel), encoding="utf-8") as f:
                    src = f.read()
                ctxs = file_contexts(rel, src)
                patterns = [CALLS] + EXTRA_CALLS.get(rel, [])
                for pat in patterns:
                    for m in re.finditer(pat, src):
                        args = span(src, m.end())
                        parts = rcparse.split_args(args)
                        lits_ctx = ctxs
                        texts = args
                        # ZX_GetTranslation(text, context): the text is the first
                        # argument; a literal context overrides the file's.
                        if m.group(0).startswith("ZX_GetTranslation"):
                            texts = parts[0]
                            if len(parts) > 1 and re.fullmatch(LIT, parts[1].strip()):
                                lits_ctx = [cpp_literal(parts[1].strip())]
                        for lm in re.finditer(LIT, texts):
                            for c in lits_ctx:
                                add(c, cpp_literal(lm.group(0)), rel)
                for pat in ARRAYS.get(rel, []):
                    for m in re.finditer(pat, src):
                        for lm in re.finditer(LIT, span(src, m.end())):
                            for c in ctxs:
                                add(c, cpp_literal(lm.group(0)), rel)
    for rel in DRIVER_FILES:
        with open(os.path.join(ROOT, rel), encoding="utf-8") as f:
            src = f.read()
        for text, pos in driver_texts(src):
            if translatable_template_text(text):
                add(DRIVER_CONTEXT, text, rel)
    return found


def driver_texts(src):
    """The user-visible texts of the simulated camera's descriptions."""
    out = []
    for m in re.finditer(r"\badd\s*\(", src):
        parts = rcparse.split_args(span(src, m.end()))
        lits = [p for p in parts if re.fullmatch(LIT, p)]
        # Properties: add(name, text, ...); formats: add(name, flags, ...).
        if len(parts) > 1 and re.fullmatch(LIT, parts[1]):
            out.append((cpp_literal(parts[1]), m.start()))
        elif lits and parts[0] == lits[0]:
            out.append((cpp_literal(lits[0]), m.start()))
        elif parts and parts[0].startswith("CZxStringW::Formatted(") and lits == []:
            lm = re.search(LIT, parts[0])
            if lm:
                out.append((cpp_literal(lm.group(0)), m.start()))
    for m in re.finditer(r"\b(TextIntList)\s*\(", src):
        for lm in re.finditer(LIT, span(src, m.end())):
            out.append((cpp_literal(lm.group(0)), m.start()))
    for m in re.finditer(r"\bEntry\s*\(", src):
        parts = rcparse.split_args(span(src, m.end()))
        if len(parts) == 3 and re.fullmatch(LIT, parts[2]):
            out.append((cpp_literal(parts[2]), m.start()))
    for m in re.finditer(r"for\s*\(\s*const\s+wchar_t\s*\*\s*\w+\s*:\s*\{", src):
        for lm in re.finditer(LIT, span(src, m.end())):
            out.append((cpp_literal(lm.group(0)), m.start()))
    # Command descriptions: {name, text, asynchronous}.
    for m in re.finditer(r"\{\s*(" + LIT + r")\s*,\s*(" + LIT + r")\s*,\s*(?:true|false)\s*\}", src):
        out.append((cpp_literal(m.group(2)), m.start()))
    return out


def template_texts():
    """(template name, text) -> references, from the English templates."""
    found = {}
    for fn in sorted(os.listdir(os.path.join(ROOT, "resources"))):
        if not fn.endswith(".rc"):
            continue
        with open(os.path.join(ROOT, "resources", fn), encoding="utf-8") as f:
            _, dialogs = rcparse.parse(f.read())
        for d in dialogs:
            if not langs.is_source_language(d.language):
                continue
            ref = "resources/%s" % fn
            if d.caption:
                found.setdefault((d.name, d.caption), []).append(ref)
            for c in d.controls:
                if c.shows_text and c.text and translatable_template_text(c.text):
                    found.setdefault((d.name, c.text), []).append(ref)
    return found


def translatable_template_text(text):
    """Texts with a letter in them; numbers and signs ("2x", "%", "180") stay as they are."""
    return any(ch.isalpha() for ch in text.replace("x", "")) and not re.fullmatch(r"[0-9]+x", text)


def flags(text):
    """printf-style texts: msgfmt --check then compares their directives."""
    return ["c-format"] if re.search(r"%[-+ 0#]*[0-9]*(\.[0-9]+)?(l|ll|h)?[dsfuxXc]", text) else []


def collect():
    entries = []
    for (ctx, text), refs in sorted(template_texts().items()):
        entries.append(po.Entry(ctx, text, refs=sorted(set(refs))))
    for (ctx, text), refs in sorted(code_texts().items()):
        entries.append(po.Entry(ctx, text, refs=sorted(set(refs)), flags=flags(text)))
    return entries


def header(lang):
    return ["Project-Id-Version: ZxGrabberSupport", "PO-Revision-Date: 2026-11-25 00:00+0000",
            "Last-Translator: ZxGrabberSupport developers", "Language-Team: " + (lang or "none"),
            "Language: " + lang, "MIME-Version: 1.0",
            "Content-Type: text/plain; charset=UTF-8", "Content-Transfer-Encoding: 8bit"]


def merged(entries, path):
    """The catalog at path brought in line with the template entries."""
    old = {}
    if os.path.exists(path):
        for e in po.read(path)[1]:
            old[e.key] = e
    out = []
    for e in entries:
        o = old.get(e.key)
        out.append(po.Entry(e.ctx, e.msgid, o.msgstr if o else "", e.refs, o.comments if o else [], e.flags))
    return out


def main(argv):
    check = "--check" in argv
    entries = collect()
    outputs = {os.path.join(TRANSLATIONS, "messages.pot"):
               ("", [po.Entry(e.ctx, e.msgid, "", e.refs, flags=e.flags) for e in entries]),
               os.path.join(TRANSLATIONS, "en.po"):
               ("en_US", [po.Entry(e.ctx, e.msgid, e.msgid, e.refs, flags=e.flags) for e in entries])}
    for code in langs.CODES:
        if code == "en":
            continue
        path = os.path.join(TRANSLATIONS, langs.LANGS[code].po + ".po")
        if os.path.exists(path):
            outputs[path] = (langs.LANGS[code].locale, merged(entries, path))
    stale = []
    for path, (lang, es) in outputs.items():
        tmp = path + ".tmp"
        po.write(tmp, header(lang), es)
        with open(tmp, encoding="utf-8") as f:
            new = f.read()
        old = open(path, encoding="utf-8").read() if os.path.exists(path) else None
        if check:
            os.remove(tmp)
            if new != old:
                stale.append(os.path.relpath(path, ROOT))
        else:
            os.replace(tmp, path)
    if stale:
        print("out of date (run tools/i18n/extract.py): " + ", ".join(stale))
        return 1
    print("%d entries" % len(entries))
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
