"""Run by gdb, stopped in the subject: evaluates every expression of the natvis file on an object of the subject of that
class, so that a field which is no longer there fails. $natvis names the file. Prints how many expressions did well."""

import re
import sys
import xml.etree.ElementTree

import gdb

SPACE = "{http://schemas.microsoft.com/vstudio/debugger/natvis/2010}"
NAME = re.compile(r"(?<![\w.>$])[A-Za-z_]\w*")
TYPE_WORDS = ("long",)


def expressions_of(node):
    """Every expression of a type, in whatever element it stands."""
    for element in node.iter():
        if "Condition" in element.attrib:
            yield element.attrib["Condition"]
        if element.tag == SPACE + "DisplayString":
            yield from re.findall(r"\{([^{}]*)\}", element.text)
        elif element.tag in (SPACE + tag for tag in ("Item", "Size", "ValuePointer", "ValueNode")):
            yield element.text


def is_shown_as(value, pattern):
    """Whether the name of a class is that of the file, up to its template arguments."""
    name = value.type.strip_typedefs().unqualified().name or ""
    return name.split("<")[0] == pattern.split("<")[0]


objects = [(symbol.name, symbol.value(gdb.selected_frame())) for symbol in gdb.selected_frame().block()
           if symbol.is_variable]
evaluated = 0
failures = []
for node in xml.etree.ElementTree.parse(gdb.convenience_variable("natvis").string()).getroot().iter(SPACE + "Type"):
    patterns = [node.attrib["Name"]] + [other.attrib["Name"] for other in node.iter(SPACE + "AlternativeType")]
    for pattern in patterns:
        names = [name for name, value in objects if is_shown_as(value, pattern)]
        if not names:
            failures.append("%s: no object of this class in the subject" % pattern)
            continue
        for expression in expressions_of(node):
            # A name that does not follow another is a field of the object; $i is an index.
            whole = NAME.sub(lambda name: name[0] if name[0] in TYPE_WORDS else "%s.%s" % (names[0], name[0]),
                             expression.replace("$i", "0"))
            try:
                gdb.parse_and_eval(whole)
                evaluated += 1
            except gdb.error as error:
                failures.append("%s: %s: %s" % (pattern, expression, error))
print("\n".join(failures) or "%d expressions evaluated" % evaluated)
sys.stdout.flush()
gdb.execute("kill")
gdb.execute("quit %d" % (1 if failures or evaluated == 0 else 0))
