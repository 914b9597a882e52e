#!/usr/bin/env python3
"""Lists the enumerators of the API reference that have no comment.

Doxygen warns about undocumented members but not about the values of an
enumeration; ./zx docs runs this over Doxygen's XML output so that an
enumerator without a comment fails the reference as a member would.
Usage: undocumented_enumerators.py XML_DIR   (exit 1 when any is found)
"""
import glob
import os
import sys
import xml.etree.ElementTree as ET


def has_text(element):
    return element is not None and "".join(element.itertext()).strip() != ""


def undocumented(xml_dir):
    found = set()
    for path in glob.glob(os.path.join(xml_dir, "*.xml")):
        if os.path.basename(path) == "index.xml":
            continue
        for enum in ET.parse(path).getroot().iter("memberdef"):
            if enum.get("kind") != "enum":
                continue
            location = enum.find("location")
            where = "%s:%s" % (location.get("file"), location.get("line")) if location is not None else "?"
            for value in enum.findall("enumvalue"):
                if not has_text(value.find("briefdescription")) and not has_text(value.find("detaileddescription")):
                    found.add("%s: enumerator %s is not documented." % (where, value.findtext("name")))
    return sorted(found)


if __name__ == "__main__":
    if len(sys.argv) != 2 or not os.path.isdir(sys.argv[1]):
        sys.exit("usage: undocumented_enumerators.py XML_DIR")
    lines = undocumented(sys.argv[1])
    for line in lines:
        print(line)
    sys.exit(1 if lines else 0)
