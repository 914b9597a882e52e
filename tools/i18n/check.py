#!/usr/bin/env python3
"""The catalogs' test: run by ctest (test "i18n_catalogs").

Fails when
- a text the code looks up or a template shows has no entry (the catalog
  template is out of date: tools/i18n/extract.py),
- a generated template file differs from the generator's output
  (tools/i18n/generate.py),
- a language has no catalog, or an entry of a catalog is empty,
- msgfmt --check rejects a catalog (syntax, printf directives that differ).
"""
import os
import subprocess
import sys

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import extract    # noqa: E402
import generate   # noqa: E402
import langs      # noqa: E402
import po         # noqa: E402


def main():
    faults = []
    if extract.main(["--check"]) != 0:
        faults.append("catalog template out of date")
    if generate.main(["--check"]) != 0:
        faults.append("generated templates out of date")
    keys = {e.key for e in po.read(os.path.join(extract.TRANSLATIONS, "messages.pot"))[1]}
    counts = []
    for code, lang in langs.LANGS.items():
        path = os.path.join(extract.TRANSLATIONS, lang.po + ".po")
        if not os.path.exists(path):
            faults.append("%s: no catalog" % code)
            continue
        entries = po.read(path)[1]
        have = {e.key for e in entries if e.msgstr.strip()}
        for ctx, msgid in sorted(keys - have):
            faults.append("%s: no translation of %r (%s)" % (code, msgid, ctx))
        r = subprocess.run(["msgfmt", "--check", "-o", os.devnull, path], capture_output=True, text=True)
        if r.returncode != 0:
            faults.append("%s: msgfmt: %s" % (code, r.stderr.strip()))
        counts.append("%s %d" % (code, len(have & keys)))
    print("entries: " + ", ".join(counts))
    for f in faults:
        print(f)
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
