"""Tests of tools/corpus/check-models: a copy with a fault must be told from one without."""

import os
import stat
import subprocess
import sys
import tempfile
import unittest
import zipfile

CORPUS = os.path.join(os.path.dirname(os.path.abspath(__file__)), "../../tools/corpus")
sys.path.insert(0, CORPUS)

from modelcheck.dump import parse_dump, values_by_element  # noqa: E402
from modelcheck.facts import Facts  # noqa: E402
from modelcheck.family import family_of  # noqa: E402
from modelcheck.matching import KEPT, LOST, UNDERSTOOD, Matching  # noqa: E402
from modelcheck.metamodels import Metamodels  # noqa: E402
from modelcheck.xmltree import NotCountable, parse  # noqa: E402

LISTING = """class Model : uml.Package
class Package : uml.Named
    packagedElement : Named [0..*] composite
abstract class Named
    name : String [0..1]
    visibility : Visibility [0..1]
class Class : uml.Named
    isAbstract : Boolean [1..1] = false
    ownedAttribute : Property [0..*] composite
    ownedComment : Comment [0..*] composite
class Comment
    body : String [0..*]
    annotatedElement : Named [0..*]
class Property : uml.Named
    type : Class [0..1]
    aggregation : Aggregation [1..1] = none
    lower : Integer [0..1] = 1
    upper : UnlimitedNatural [0..1] = 1
    lowerValue : LiteralInteger [0..1] composite
    upperValue : LiteralUnlimitedNatural [0..1] composite
class LiteralInteger
    value : Integer [1..1] = 0
class LiteralUnlimitedNatural
    value : UnlimitedNatural [0..1]
enumeration Visibility { public, private }
enumeration Aggregation { none, composite }
"""

HEAD = ('<xmi:XMI xmi:version="2.1" xmlns:xmi="http://schema.omg.org/spec/XMI/2.1" '
        'xmlns:uml="http://schema.omg.org/spec/UML/2.1" xmlns:odd="http://example.org/odd">')

SHOP = """<uml:Model xmi:id="m" name="Shop">
  <packagedElement xmi:type="uml:Class" xmi:id="c" name="Order" visibility="public" isAbstract="false" odd="yes">
    <odd:note xmi:id="n" text="late"><line>1</line></odd:note>
    <ownedComment xmi:type="uml:Comment" xmi:id="k"><body>one</body><annotatedElement xmi:idref="c"/></ownedComment>
    <ownedAttribute xmi:type="uml:Property" xmi:id="a" name="lines" aggregation="composite" type="d">
      <lowerValue xmi:type="uml:LiteralInteger" xmi:id="l"/>
      <upperValue xmi:type="uml:LiteralUnlimitedNatural" xmi:id="u" value="*"/>
    </ownedAttribute>
    <ownedAttribute xmi:type="uml:Property" xmi:id="b" name="note"><type href="types.uml#Text"/></ownedAttribute>
  </packagedElement>
  <packagedElement xmi:type="uml:Class" xmi:id="d" name="Line"/>
</uml:Model>"""

# The same by zel's habits, with ids of its own: defaults left out, links and values as attributes.
COPY = """<xmi:Extension extender="z" persistentIds="true" nextIdValue="9"/><xmi:Documentation exporter="z"/>
<uml:Model xmi:id="1" name="Shop">
  <packagedElement xmi:id="2" xmi:type="uml:Class" name="Order" odd="yes">
    <odd:note xmi:id="n" text="late"><line>1</line></odd:note>
    <ownedComment xmi:id="3" xmi:type="uml:Comment" body="one" annotatedElement="2"/>
    <ownedAttribute xmi:id="4" xmi:type="uml:Property" name="lines" aggregation="composite" type="8">
      <upperValue xmi:id="6" xmi:type="uml:LiteralUnlimitedNatural" value="*"/>
      <lowerValue xmi:id="5" xmi:type="uml:LiteralInteger"/>
    </ownedAttribute>
    <ownedAttribute xmi:id="7" xmi:type="uml:Property" name="note"><type href="../types.uml#Text"/></ownedAttribute>
  </packagedElement>
  <packagedElement xmi:id="8" xmi:type="uml:Class" name="Line"/>
</uml:Model>"""


def ask(*arguments):
    return LISTING if len(arguments) > 1 else "http://schema.omg.org/spec/UML/2.1  uml  9 classes\n"


class Files(unittest.TestCase):
    """A test with a folder of its own."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name

    def file(self, name, text):
        path = os.path.join(self.folder, name)
        with open(path, "w", encoding="utf-8") as file:
            file.write(text)
        return path

    def parsed(self, content, head=HEAD):
        return parse(self.file("parsed.xmi", head + content + "</xmi:XMI>"))


class Reading(Files):
    def test_families_are_told_by_exporter_and_namespaces(self):
        uml = "http://www.eclipse.org/uml2/5.0.0/UML"
        for head, content, expected in (
                (HEAD, '<xmi:Documentation exporter="Maker" exporterVersion="16.5.1 beta"/><uml:Model/>',
                 "Maker 16.5, UML 2.1, XMI 2.1"),
                (HEAD, "<xmi:Documentation><xmi:exporter>Maker</xmi:exporter></xmi:Documentation><uml:Model/>",
                 "Maker, UML 2.1, XMI 2.1"),
                ('<xmi:XMI xmlns:xmi="http://www.omg.org/spec/XMI/20131001" xmlns:u="' + uml + '">',
                 "<u:Class/><u:Class/>", "Eclipse UML2 5.0, XMI 20131001, several at the top")):
            self.assertEqual(family_of(self.parsed(content, head)), expected)

    def test_a_model_in_a_container_is_read(self):
        path = os.path.join(self.folder, "shop.mdzip")
        with zipfile.ZipFile(path, "w") as container:
            container.writestr("notes.xml", "<notes/>" * 100)
            container.writestr("shop.uml", HEAD + "<uml:Model/></xmi:XMI>")
        self.assertEqual([node.name for node in parse(path).elements()], ["Model"])

    def test_files_that_harm_parsers_are_not_counted(self):
        for text in ('<!DOCTYPE a [<!ENTITY b "c">]><a>&b;</a>', "<a>", "", "<a>" * 3000 + "</a>" * 3000,
                     "PK\x03\x04 and no more"):
            with self.assertRaises(NotCountable):
                parse(self.file("harmful.xml", text))


class Copies(Files):
    def setUp(self):
        super().setUp()
        self.metamodels = Metamodels(ask)

    def examine(self, copy, original=SHOP):
        """The states of the original's elements by their ids or names, and what is false or lost of their values."""
        matching = Matching(self.parsed(original), self.parsed(copy), self.metamodels)
        states = {node.id or node.name + "@" + str(node.parent.id): matching.state(node)
                  for node in matching.original.elements()}
        facts = Facts(matching, self.metamodels, {})
        return states, {f"{fact.node.id}.{fact.what}" for fact in facts.all() if not fact.is_true}, \
            [f"{node.id}.{name}" for node, name in facts.lost_attributes()[1]]

    def test_everything_of_a_faithful_copy_is_found(self):
        states, false, lost = self.examine(COPY)
        self.assertEqual({name for name, state in states.items() if state == KEPT}, {"n", "line@n", "type@b"})
        self.assertNotIn(LOST, states.values())
        self.assertEqual((states["body@k"], states["annotatedElement@k"]), (UNDERSTOOD, UNDERSTOOD))
        self.assertEqual((false, lost), (set(), []))

    def test_an_element_of_an_unknown_kind_is_only_kept(self):
        states, _, _ = self.examine(COPY.replace('xmi:id="3" xmi:type="uml:Comment"', 'xmi:id="k" xmi:type="uml:Memo"'))
        self.assertEqual(states["k"], KEPT)

    def test_what_a_copy_lacks_is_lost(self):
        for gone, state in (('<packagedElement xmi:id="8" xmi:type="uml:Class" name="Line"/>', "d"),
                            ('<type href="../types.uml#Text"/>', "type@b"), ("<line>1</line>", "line@n"),
                            (' body="one"', "body@k"), (' annotatedElement="2"', "annotatedElement@k"),
                            ('<lowerValue xmi:id="5" xmi:type="uml:LiteralInteger"/>', "l")):
            states, _, _ = self.examine(COPY.replace(gone, ""))
            self.assertEqual([name for name, found in states.items() if found == LOST], [state], gone)

    def test_what_a_copy_says_otherwise_is_false(self):
        for right, wrong, fact in (('name="Line"', 'name="Row"', "d.name"), ('type="8"', 'type="2"', "a.type"),
                                   ('aggregation="composite"', "", "a.aggregation"),
                                   ('value="*"', 'value="7"', "a.upper")):
            _, false, _ = self.examine(COPY.replace(right, wrong))
            self.assertIn(fact, false)

    def test_an_attribute_that_is_gone_is_lost_unless_it_has_its_default(self):
        for text, attribute in ((' odd="yes"', "c.odd"), (' text="late"', "n.text")):
            _, _, lost = self.examine(COPY.replace(text, ""))
            self.assertEqual(lost, [attribute])

    def test_ids_find_what_has_moved(self):
        moved = COPY.replace('<packagedElement xmi:id="8" xmi:type="uml:Class" name="Line"/>', "").replace(
            '<ownedAttribute xmi:id="7"', '<packagedElement xmi:id="d" xmi:type="uml:Class"/><ownedAttribute xmi:id="7"')
        states, false, _ = self.examine(moved)
        self.assertEqual(states["d"], KEPT)  # zel's classes hold no packagedElement
        self.assertIn("a.type", false)

    def test_a_type_may_have_been_found_by_the_name_in_its_id(self):
        original = SHOP.replace('href="types.uml#Text"', 'xmi:idref="EAJava_Line"')
        untyped = COPY.replace('<type href="../types.uml#Text"/>', "")
        for found, state in (("8", UNDERSTOOD), ("2", LOST)):
            states, _, _ = self.examine(untyped.replace('name="note"', f'name="note" type="{found}"'), original)
            self.assertEqual(states["type@b"], state)

    def test_values_of_a_dump_stand_beside_the_elements(self):
        document = self.parsed(COPY)
        dumped = parse_dump("""
  [ Model name="Shop"
    [ factory id="-1 {readonly}"
    ]
    [ packagedElement name="Order"
      [ ownedAttribute name="lines" lower="0" upper="*"
      ] type="Line:Class"
      [ ownedAttribute name="note" lower="1" upper="1"
      ]
    ]
    [ packagedElement name="Line"
    ]
  ]""")
        said = values_by_element(dumped, document, lambda element: element.type or element.parent is document.root)
        self.assertEqual({element.id: values.get("lower") for element, values in said.items()},
                         {"1": None, "2": None, "4": "0", "7": "1", "8": None})


class Runs(Files):
    """The script with programs in the place of zel."""

    def check(self, program, *options, model=HEAD + SHOP + "</xmi:XMI>"):
        path = self.file("zel", "#!/bin/sh\ncase $1 in metamodel) [ $2 ] || echo http://schema.omg.org/spec/UML/2.1 uml"
                                "; exit;; esac\n" + program)
        os.chmod(path, os.stat(path).st_mode | stat.S_IXUSR)
        return subprocess.run([os.path.join(CORPUS, "check-models"), "--zel", path, *options,
                               self.file("shop.xmi", model)], capture_output=True, text=True, check=False)

    def test_all_is_well_when_nothing_changes(self):
        done = self.check('[ $1 = convert ] && { [ "$2" = "$3" ] || cp "$2" "$3"; }; exit 0')
        self.assertEqual((done.returncode, done.stderr), (0, ""))

    def test_each_fault_ends_with_1(self):
        copy = '[ $1 = convert ] && { [ "$2" = "$3" ] || cp "$2" "$3"; }; '
        for program, complaint in ((copy + "[ $1 != compare ]", "1 of 1 copies are not equal"),
                                   ('[ $1 != convert ] || { sed s/Line/Line$$/ "$2" > "$3~" && mv "$3~" "$3"; }',
                                    "1 of 1 copies are not stable"),
                                   ("[ $1 != convert ] || { echo zel: no >&2; exit 2; }", "0.0 % of the elements held"),
                                   ("[ $1 != convert ] || { echo zel: no >&2; echo zel: no >&2; exit 2; }", "one line"),
                                   ("[ $1 != convert ] || kill -SEGV $$", "crashed"),
                                   ("[ $1 != convert ] || sleep 9", "timed out")):
            done = self.check(program, "--timeout", "2" if "sleep" in program else "60")
            self.assertEqual(done.returncode, 1, program)
            self.assertIn(complaint, done.stderr, program)

    def test_a_file_without_a_model_is_to_be_refused(self):
        self.assertEqual(self.check("echo zel: no >&2; exit 2", model="<shop/>").returncode, 0)


if __name__ == "__main__":
    unittest.main()
