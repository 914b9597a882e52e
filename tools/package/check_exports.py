#!/usr/bin/env python3
"""Fails when a public header declares an exported name its DLL does not export,
or declares a function the DLL must export without the export macro.

What counts as declared exported (read after the target compiler's
preprocessor, so the headers' own conditionals and macros are honoured):
  * a function or variable at namespace scope whose declaration carries the
    export macro;
  * in a class or struct that carries the macro: every public or protected
    member function declared without a body, and every static data member
    declared without an initialiser. Pure virtual, deleted, defaulted, inline
    and constexpr members are not exported by the compiler and are skipped, as
    are members the header itself defines out of class.
A function is matched by name, parameter count and the library types (C/S/E/I/R
+ Zx names) its parameters name, so a missing overload is caught; other types
(built-in, aliases, the standard library's) match any spelling.
The same declarations without the macro (in a class without it, or a
non-inline function at namespace scope) are reported unless the DLL exports
them anyway: a driver could not link them.
The DLL's exports are read with objdump -p and demangled with c++filt.
"""
import argparse
import os
import re
import subprocess
import sys
import tempfile

TOKEN = re.compile(r'''
    L?"(?:\\.|[^"\\])*" | L?'(?:\\.|[^'\\])*'
  | [A-Za-z_]\w*
  | \.?\d[\w.']*
  | ::|->|\.\.\.|<<=|>>=|<<|>>|==|!=|<=|>=|&&|\|\||[-+*/%&|^!~=<>?:;,.(){}\[\]#@]
''', re.X)
IDENT = re.compile(r'[A-Za-z_]\w*$')
TYPE_NAME = re.compile(r'[CSEIR]Zx[A-Z_]\w*$')
# Words followed by a parenthesised list that is not a parameter list.
NOT_NAMES = {'decltype', 'alignas', '__attribute__', '__declspec', 'sizeof', 'noexcept', 'throw',
             'static_assert', 'alignof', '__asm__', 'asm'}
MARK = '__zx_exported_mark__'


def tokens(text):
    return TOKEN.findall(text)


def closing(toks, open_at):
    """Index of the bracket closing toks[open_at]."""
    depth = 0
    for i in range(open_at, len(toks)):
        if toks[i] in ('(', '[', '{'):
            depth += 1
        elif toks[i] in (')', ']', '}'):
            depth -= 1
            if depth == 0:
                return i
    return len(toks)


def split_params(toks, open_at, close):
    """The parameters of the list toks[open_at..close] as token lists, default arguments cut off."""
    params = toks[open_at + 1:close]
    if not params or params == ['void']:
        return []
    out, cur = [], []
    depth = angle = 0
    for t in params:
        if t in ('(', '[', '{'):
            depth += 1
        elif t in (')', ']', '}'):
            depth -= 1
        elif depth == 0 and t == '<':
            angle += 1
        elif depth == 0 and t == '>' and angle:
            angle -= 1
        elif depth == 0 and angle == 0 and t == ',':
            out.append(cur)
            cur = []
            continue
        cur.append(t)
    out.append(cur)
    return [p[:p.index('=')] if '=' in p else p for p in out]


def param_key(param, aliases):
    """The library type a parameter names (its own naming: C/S/E/I/R + Zx; the last part of a
    qualified name), or '?' when it names none, only an alias or a function type, which
    demangled names spell differently."""
    if '(' in param:
        return '?'
    for i, t in enumerate(param):
        if TYPE_NAME.match(t) and t not in aliases and param[i + 1:i + 2] != ['::']:
            return t
    return '?'


def function_decl(stmt):
    """(qualified name as written, parameters, index closing the list) or None."""
    angle, i = 0, 0
    while i < len(stmt):
        t = stmt[i]
        if t == '<':
            angle += 1
        elif t == '>' and angle:
            angle -= 1
        elif t == 'operator':
            j = i + 1
            if stmt[j:j + 2] == ['(', ')']:
                j += 2
            while j < len(stmt) and stmt[j] != '(':
                j += 1
            if j >= len(stmt):
                return None
            name, start = 'operator' + ''.join(stmt[i + 1:j]), i
            return qualified(stmt, name, start, j)
        elif t == '(' and angle == 0:
            if i > 0 and stmt[i - 1] in NOT_NAMES:
                i = closing(stmt, i) + 1
                continue
            if i == 0 or not IDENT.match(stmt[i - 1]) or stmt[i + 1:i + 2] in (['*'], ['&'], ['^']):
                return None  # a function pointer, a cast or a call, not a declaration
            name, start = stmt[i - 1], i - 1
            if start > 0 and stmt[start - 1] == '~':
                name, start = '~' + name, start - 1
            return qualified(stmt, name, start, i)
        i += 1
    return None


def qualified(stmt, name, start, open_at):
    while start >= 2 and stmt[start - 1] == '::' and IDENT.match(stmt[start - 2]):
        name, start = stmt[start - 2] + '::' + name, start - 2
    close = closing(stmt, open_at)
    return name, split_params(stmt, open_at, close), close


def aliases_in(toks):
    """Names that typedef or using declarations introduce (the demangler shows what they stand for)."""
    names, i = set(), 0
    while i < len(toks):
        if toks[i] == 'using' and i + 2 < len(toks) and toks[i + 2] == '=':
            names.add(toks[i + 1])
        elif toks[i] == 'typedef':
            j, depth = i, 0
            while j < len(toks) and not (toks[j] == ';' and depth == 0):
                depth += toks[j] == '{'
                depth -= toks[j] == '}'
                j += 1
            stmt = toks[i:j]
            ptr = [stmt[k + 2] for k in range(len(stmt) - 2) if stmt[k:k + 2] == ['(', '*']]
            idents = [t for t in stmt if IDENT.match(t)]
            names.add(ptr[0] if ptr else idents[-1] if idents else '')
            i = j
        i += 1
    return names


def strip_mark(stmt):
    return [t for t in stmt if t != MARK]


class HeaderScan:
    """Walks one header's tokens with a stack of scopes: (kind, name, exported, access)."""

    def __init__(self, aliases):
        self.aliases = aliases
        self.required = {}   # (qualified name, signature or None) -> header
        self.unmarked = {}   # the same, for declarations the DLL must export but that lack the macro
        self.defined = set()  # members the headers define out of class

    def scan(self, header, toks):
        scopes = [('namespace', '', False, 'public')]
        stmt = []
        i = 0
        while i < len(toks):
            t = toks[i]
            if t == ';':
                self.statement(header, stmt, scopes)
                stmt = []
            elif t == '{':
                opened = self.opens(stmt, scopes)
                if opened:
                    scopes.append(opened)
                    stmt = []
                else:
                    end = closing(toks, i)
                    if self.is_body(stmt):
                        self.body(stmt, scopes)
                        stmt = []
                    elif stmt:
                        stmt.append('{}')  # an initialiser; the statement goes on
                    i = end
            elif t == '}':
                if len(scopes) > 1:
                    scopes.pop()
                stmt = []
            elif not stmt and t in ('public', 'protected', 'private') and toks[i + 1:i + 2] == [':']:
                kind, name, exported, _ = scopes[-1]
                scopes[-1] = (kind, name, exported, t)
                i += 1
            else:
                stmt.append(t)
            i += 1

    @staticmethod
    def is_body(stmt):
        decl = function_decl(strip_mark(stmt))
        if not decl:
            return False
        tail = strip_mark(stmt)[decl[2] + 1:]
        return not tail or tail[0] in (':', 'const', 'noexcept', 'override', 'final', 'volatile', '&',
                                       '&&', '->', 'throw', '__attribute__')

    def opens(self, stmt, scopes):
        s = [t for t in stmt if t != 'inline']
        if s[:1] == ['namespace']:
            return ('namespace', s[1] if len(s) > 1 else '', False, 'public')
        if s[:1] == ['extern'] and s[1:2] in (['"C"'], ['"C++"']):
            return ('namespace', '', False, 'public')
        if s[:1] == ['template']:
            if function_decl(s):
                return None
            return ('template', '', False, 'private')
        if 'enum' in s and '(' not in s:
            return ('enum', '', False, 'public')
        key = next((k for k in ('class', 'struct', 'union') if k in s), None)
        if key and '(' not in s and '=' not in s:
            rest = strip_mark(s[s.index(key) + 1:])
            name = rest[0] if rest and IDENT.match(rest[0]) else ''
            kind = 'class' if scopes[-1][0] in ('namespace', 'class') else 'other'
            return (kind, name, MARK in s, 'private' if key == 'class' else 'public')
        return None

    def qualify(self, scopes, name):
        return '::'.join([s[1] for s in scopes if s[1]] + [name])

    def require(self, target, header, scopes, stmt):
        decl = function_decl(stmt)
        if decl:
            name, params, close = decl
            if stmt[close + 1:][-2:] in (['=', '0'], ['=', 'delete'], ['=', 'default']):
                return
            target[(self.qualify(scopes, name), self.signature(params))] = header
        else:
            names = [t for t in stmt if IDENT.match(t)]
            if names:
                target[(self.qualify(scopes, names[-1]), None)] = header

    def statement(self, header, stmt, scopes):
        if not stmt or stmt[0] in ('typedef', 'using', 'friend', 'template', 'static_assert'):
            return
        kind, _, exported, access = scopes[-1]
        s = strip_mark(stmt)
        if kind == 'namespace':
            if stmt[0] in ('class', 'struct', 'union', 'enum'):
                return
            if MARK in stmt:
                self.require(self.required, header, scopes, s)
            elif function_decl(s) and not {'inline', 'constexpr', 'static'} & set(s):
                self.require(self.unmarked, header, scopes, s)
            return
        if kind != 'class' or access == 'private' or 'inline' in s or 'constexpr' in s:
            return
        if function_decl(s) or ('static' in s and '=' not in s and '{}' not in s):
            marked = all(sc[2] for sc in scopes if sc[0] == 'class')
            self.require(self.required if marked else self.unmarked, header, scopes, s)

    def body(self, stmt, scopes):
        decl = function_decl(strip_mark(stmt))
        if decl and scopes[-1][0] == 'namespace' and '::' in decl[0]:
            self.defined.add((self.qualify(scopes, decl[0]), self.signature(decl[1])))

    def signature(self, params):
        return tuple(param_key(p, self.aliases) for p in params)


def preprocess(cxx, flags, macro_header, macro, headers):
    """Preprocesses every header in one unit, with the export macro replaced by a marker
    (defined once its own header has run, which #pragma once keeps from running again)."""
    with tempfile.NamedTemporaryFile('w', suffix='.cpp', delete=False) as unit:
        unit.write('#include "%s"\n#undef %s\n#define %s %s\n' % (macro_header, macro, macro, MARK))
        for h in headers:
            unit.write('#include "%s"\n' % h)
        name = unit.name
    try:
        run = subprocess.run([cxx, '-E', '-x', 'c++', '-std=c++17'] + flags + [name],
                             capture_output=True, text=True)
    finally:
        os.unlink(name)
    if run.returncode:
        sys.exit('the headers do not preprocess:\n' + run.stderr)
    out = run.stdout
    wanted = {os.path.realpath(h): h for h in headers}
    texts = {h: [] for h in headers}
    current = None
    for line in out.splitlines():
        m = re.match(r'#\s*(?:line\s+)?\d+\s+"([^"]*)"', line)
        if m:
            current = wanted.get(os.path.realpath(m.group(1)))
        elif current:
            texts[current].append(line)
    return {h: tokens('\n'.join(t)) for h, t in texts.items()}, tokens(out)


def exported_names(objdump, cxxfilt, library):
    """{qualified name: set of signatures (None for data or unmangled names)}."""
    dump = subprocess.run([objdump, '-p', library], check=True, capture_output=True, text=True).stdout
    table = dump.split('[Ordinal/Name Pointer] Table', 1)
    names = re.findall(r'^\s*\[\s*\d+\]\s+(\S+)', table[1], re.M) if len(table) == 2 else []
    plain = subprocess.run([cxxfilt], input='\n'.join(names), check=True, capture_output=True,
                           text=True).stdout.splitlines()
    exports = {}
    for d in plain:
        if ' for ' in d or 'thunk to' in d:
            continue  # vtables, type information, thunks
        d = re.sub(r'\[abi:\w+\]', '', d)  # ABI tags are not part of the name
        decl = function_decl(tokens(d))
        if decl:
            exports.setdefault(decl[0], set()).add(tuple(param_key(p, ()) for p in decl[1]))
        else:
            exports.setdefault(d.strip(), set()).add(None)
    return exports


def matches(declared, exported):
    """Same parameter count, and every parameter names the same library type ('?' matches any)."""
    return (declared is not None and exported is not None and len(declared) == len(exported) and
            all(d == e or '?' in (d, e) for d, e in zip(declared, exported)))


def main():
    ap = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    ap.add_argument('--cxx', required=True, help='the target C++ compiler')
    ap.add_argument('--objdump', required=True)
    ap.add_argument('--cxxfilt', required=True)
    ap.add_argument('--library', required=True, help='the DLL')
    ap.add_argument('--macro', required=True, help='the export macro')
    ap.add_argument('--macro-header', required=True, help='the header defining it')
    ap.add_argument('--headers', required=True, help='folder of the public headers')
    ap.add_argument('-I', dest='includes', action='append', default=[])
    ap.add_argument('-D', dest='defines', action='append', default=[])
    ap.add_argument('--list', action='store_true', help='print every name the headers declare exported')
    args = ap.parse_args()

    folder = os.path.abspath(args.headers)
    headers = sorted(os.path.join(folder, f) for f in os.listdir(folder) if f.endswith('.h'))
    flags = ['-I' + os.path.abspath(i) for i in args.includes] + ['-D' + d for d in args.defines]
    texts, everything = preprocess(args.cxx, flags, os.path.abspath(args.macro_header), args.macro, headers)
    scan = HeaderScan(aliases_in(everything))
    for h, toks in texts.items():
        scan.scan(h, toks)
    exports = exported_names(args.objdump, args.cxxfilt, args.library)

    def exported(name, sig):
        found = exports.get(name, set())
        return (name, sig) in scan.defined or None in found or any(matches(sig, f) for f in found)

    def describe(header, name, sig):
        return '%s: %s%s' % (os.path.basename(header), name, '' if sig is None else '(%s)' % ', '.join(sig))

    order = lambda kv: (kv[1], kv[0][0], str(kv[0][1]))
    missing = [describe(h, n, s) for (n, s), h in sorted(scan.required.items(), key=order) if not exported(n, s)]
    # Declared without the macro, defined nowhere in the header and not exported: a driver cannot link it.
    unmarked = [describe(h, n, s) for (n, s), h in sorted(scan.unmarked.items(), key=order) if not exported(n, s)]
    print('%s: %d names declared exported in %d header(s); %d names exported by the library' %
          (os.path.basename(args.library), len(scan.required), len(headers), len(exports)))
    if args.list:
        for (name, sig), header in sorted(scan.required.items(), key=str):
            print('  %s %s%s' % (os.path.basename(header), name, '' if sig is None else '(%s)' % ', '.join(sig)))
    for m in missing:
        print('not exported: ' + m)
    for m in unmarked:
        print('no %s: %s' % (args.macro, m))
    if not scan.required:
        print('no declaration carries %s: the headers were not read as expected' % args.macro)
    return 1 if missing or unmarked or not scan.required else 0


if __name__ == '__main__':
    sys.exit(main())
