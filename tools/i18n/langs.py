"""The languages of the library: code, locale, resource language, dialog font."""


class Lang:
    def __init__(self, code, locale, primary, sub, langid, font=None, name=""):
        self.code, self.locale, self.primary, self.sub, self.langid = code, locale, primary, sub, langid
        # The catalog's file name: the language, or the locale where the
        # language has several (pt_BR.po, zh_CN.po).
        self.po = locale if code in ("pt", "zh") else code
        # None keeps the English templates' font ("MS Shell Dlg", 8 points).
        self.font = font
        self.name = name

    @property
    def language_line(self):
        # As numbers: resource compilers do not know every sublanguage name.
        return "LANGUAGE 0x%02x, 0x%02x  // %s, %s" % (self.langid & 0x3FF, self.langid >> 10, self.primary, self.sub)


# The CJK dialogs name the fonts those Windows versions show dialogs in; under
# Wine the test prefix maps them onto an installed CJK font (cmake/wine-run.sh).
LANGS = {l.code: l for l in [
    Lang("en", "en_US", "LANG_ENGLISH", "SUBLANG_ENGLISH_US", 0x0409, name="English (United States)"),
    Lang("de", "de", "LANG_GERMAN", "SUBLANG_GERMAN", 0x0407, name="German"),
    Lang("fr", "fr", "LANG_FRENCH", "SUBLANG_FRENCH", 0x040C, name="French"),
    Lang("es", "es", "LANG_SPANISH", "SUBLANG_SPANISH_MODERN", 0x0C0A, name="Spanish"),
    Lang("it", "it", "LANG_ITALIAN", "SUBLANG_ITALIAN", 0x0410, name="Italian"),
    Lang("pt", "pt_BR", "LANG_PORTUGUESE", "SUBLANG_PORTUGUESE_BRAZILIAN", 0x0416, name="Portuguese (Brazil)"),
    Lang("ru", "ru", "LANG_RUSSIAN", "SUBLANG_RUSSIAN_RUSSIA", 0x0419, name="Russian"),
    Lang("pl", "pl", "LANG_POLISH", "SUBLANG_POLISH_POLAND", 0x0415, name="Polish"),
    Lang("ja", "ja", "LANG_JAPANESE", "SUBLANG_JAPANESE_JAPAN", 0x0411, ("9", "Meiryo UI", ""), "Japanese"),
    Lang("ko", "ko", "LANG_KOREAN", "SUBLANG_KOREAN", 0x0412, ("9", "Malgun Gothic", ""), "Korean"),
    Lang("zh", "zh_CN", "LANG_CHINESE", "SUBLANG_CHINESE_SIMPLIFIED", 0x0804, ("9", "Microsoft YaHei UI", ""),
         "Chinese (Simplified)"),
]}
CODES = list(LANGS)


def is_source_language(language):
    """The English templates are those marked English (United States) or neutral."""
    if not language:
        return False
    return language[0] in ("LANG_ENGLISH", "LANG_NEUTRAL") and \
        (language[0] == "LANG_NEUTRAL" or language[1] == "SUBLANG_ENGLISH_US")


def by_catalog(name):
    """The language of a catalog file name without .po, or None."""
    for l in LANGS.values():
        if l.po == name:
            return l
    return None
