#!/usr/bin/env python3
"""Writes documents that are extreme in one respect, for the tests and the measurements of pages.

    extreme.py KIND COUNT OUTPUT

KIND is "edges" (of one shape), "products" and "occurrences" (of one assembly), "placed" (places of one shape), "shapes"
(products with a shape each), "triangles", "instances", "name" (a product with names of COUNT bytes) or "text" (instances
with strings of COUNT bytes).
"""
import sys

HEADER = ("ISO-10303-21;\nHEADER;\nFILE_DESCRIPTION(('extreme'),'2;1');\nFILE_NAME('extreme','2024-01-02T03:04:05',('a'),('o'),"
          "'p','Sys','');\nFILE_SCHEMA(('AP242_MANAGED_MODEL_BASED_3D_ENGINEERING_MIM_LF'));\nENDSEC;\nDATA;\n")
FOOTER = "ENDSEC;\nEND-ISO-10303-21;\n"

# A product whose shape is the representation #15; #16 is its only item.
PRODUCT = """#1=(GEOMETRIC_REPRESENTATION_CONTEXT(3)GLOBAL_UNIT_ASSIGNED_CONTEXT((#2))REPRESENTATION_CONTEXT('',''));
#2=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.MILLI.,.METRE.));
#10=PRODUCT('p','part','',());
#11=PRODUCT_DEFINITION_FORMATION('','',#10);
#12=PRODUCT_DEFINITION('','',#11,$);
#13=PRODUCT_DEFINITION_SHAPE('','',#12);
#14=SHAPE_DEFINITION_REPRESENTATION(#13,#15);
#15=SHAPE_REPRESENTATION('',(#16),#1);
"""
FRAME = """#16=GEOMETRIC_CURVE_SET('',(#17));
#17=POLYLINE('',(#18,#19,#20,#21,#18));
#18=CARTESIAN_POINT('',(0.,0.,0.));
#19=CARTESIAN_POINT('',(1.,0.,0.));
#20=CARTESIAN_POINT('',(1.,0.,0.5));
#21=CARTESIAN_POINT('',(0.,0.,0.5));
"""
# An assembly whose representation is #35.
TOP = """#30=PRODUCT('top','top','',());
#31=PRODUCT_DEFINITION_FORMATION('','',#30);
#32=PRODUCT_DEFINITION('','',#31,$);
#33=PRODUCT_DEFINITION_SHAPE('','',#32);
#34=SHAPE_DEFINITION_REPRESENTATION(#33,#35);
#35=SHAPE_REPRESENTATION('',(#36),#1);
#36=AXIS2_PLACEMENT_3D('',#37,$,$);
#37=CARTESIAN_POINT('',(0.,0.,0.));
"""


def edges(count):
    """A spatial zigzag of `count` edges; neighbours share a vertex."""
    yield PRODUCT
    side = int(count ** 0.5) + 1

    def place(i):
        return f"({i % side}.,{i // side}.,{(i * 7919) % 101}.)"

    yield "#17=LINE('',#18,#19);\n#18=CARTESIAN_POINT('',(0.,0.,0.));\n#19=VECTOR('',#20,1.);\n#20=DIRECTION('',(1.,0.,0.));\n"
    first = 100
    for i in range(count + 1):
        k = first + 3 * i
        yield f"#{k}=CARTESIAN_POINT('',{place(i)});\n#{k + 1}=VERTEX_POINT('',#{k});\n"
        if i < count:
            yield f"#{k + 2}=EDGE_CURVE('',#{k + 1},#{k + 4},#17,.T.);\n"
    yield "#16=EDGE_BASED_WIREFRAME_MODEL('',(#21));\n#21=CONNECTED_EDGE_SET('',("
    yield ",".join(f"#{first + 3 * i + 2}" for i in range(count)) + "));\n"


def products(count):
    yield TOP
    for i in range(count):
        k = 100 + 4 * i
        yield (f"#{k}=PRODUCT('p{i}','part {i}','',());\n#{k + 1}=PRODUCT_DEFINITION_FORMATION('','',#{k});\n"
               f"#{k + 2}=PRODUCT_DEFINITION('','',#{k + 1},$);\n"
               f"#{k + 3}=NEXT_ASSEMBLY_USAGE_OCCURRENCE('{i}','o{i}','',#32,#{k + 2},$);\n")


def occurrences(count):
    yield PRODUCT + FRAME + TOP
    for i in range(count):
        yield f"#{100 + i}=NEXT_ASSEMBLY_USAGE_OCCURRENCE('{i}','o{i}','',#32,#12,$);\n"


def placed(count, columns=None):
    """Places of one shape, row by row; as many columns as rows if none are given."""
    yield PRODUCT + FRAME + TOP
    side = columns or int(count ** 0.5) + 1
    for i in range(count):
        k = 1000 + 10 * i
        yield (f"#{k}=NEXT_ASSEMBLY_USAGE_OCCURRENCE('{i}','o{i}','',#32,#12,$);\n"
               f"#{k + 1}=CARTESIAN_POINT('',({2 * (i % side)}.,0.,{2 * (i // side)}.));\n"
               f"#{k + 2}=AXIS2_PLACEMENT_3D('',#{k + 1},$,$);\n"
               f"#{k + 3}=ITEM_DEFINED_TRANSFORMATION('','',#36,#{k + 2});\n"
               f"#{k + 4}=(REPRESENTATION_RELATIONSHIP('','',#15,#35)REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION"
               f"(#{k + 3})SHAPE_REPRESENTATION_RELATIONSHIP());\n"
               f"#{k + 5}=PRODUCT_DEFINITION_SHAPE('','',#{k});\n"
               f"#{k + 6}=CONTEXT_DEPENDENT_SHAPE_REPRESENTATION(#{k + 4},#{k + 5});\n")


def shapes(count):
    """Products with a triangle of edges each, side by side."""
    yield PRODUCT + FRAME + TOP
    side = int(count ** 0.5) + 1
    for i in range(count):
        k = 1000 + 20 * i
        x, y = 2 * (i % side), 2 * (i // side)
        yield (f"#{k}=PRODUCT('p{i}','part {i}','',());\n#{k + 1}=PRODUCT_DEFINITION_FORMATION('','',#{k});\n"
               f"#{k + 2}=PRODUCT_DEFINITION('','',#{k + 1},$);\n#{k + 3}=PRODUCT_DEFINITION_SHAPE('','',#{k + 2});\n"
               f"#{k + 4}=SHAPE_DEFINITION_REPRESENTATION(#{k + 3},#{k + 5});\n#{k + 5}=SHAPE_REPRESENTATION('',(#{k + 6}),#1);\n"
               f"#{k + 6}=GEOMETRIC_CURVE_SET('',(#{k + 7}));\n#{k + 7}=POLYLINE('',(#{k + 8},#{k + 9},#{k + 10},#{k + 8}));\n"
               f"#{k + 8}=CARTESIAN_POINT('',({x}.,{y}.,0.));\n#{k + 9}=CARTESIAN_POINT('',({x + 1}.,{y}.,0.));\n"
               f"#{k + 10}=CARTESIAN_POINT('',({x}.,{y + 1}.,0.));\n"
               f"#{k + 11}=NEXT_ASSEMBLY_USAGE_OCCURRENCE('{i}','o{i}','',#32,#{k + 2},$);\n")


def triangles(count):
    """A wavy surface."""
    side = max(1, int((count / 2) ** 0.5))
    yield PRODUCT
    yield "#16=TESSELLATED_SHELL('',(#17),$);\n#17=TRIANGULATED_FACE('',#18,"
    yield f"{(side + 1) ** 2},((0.,0.,1.)),$,(),("
    yield ",".join(f"({i},{i + 1},{i + side + 2}),({i},{i + side + 2},{i + side + 1})"
                   for row in range(side) for i in range(row * (side + 1) + 1, row * (side + 1) + side + 1))
    yield f"));\n#18=COORDINATES_LIST('',{(side + 1) ** 2},("
    yield ",".join(f"({x}.,{y}.,{(x * x + 3 * y * y) % 17}.)" for y in range(side + 1) for x in range(side + 1))
    yield "));\n"


def instances(count):
    for i in range(1, count + 1, 2):
        yield f"#{i}=CARTESIAN_POINT('',({i}.5,2.,3.));\n#{i + 1}=VERTEX_POINT('v{i}',#{i});\n"


def name(count):
    long = "n" * count
    yield (f"#1=APPLICATION_CONTEXT('{long}');\n#2=PRODUCT_CONTEXT('',#1,'mechanical');\n"
           f"#10=PRODUCT('{long}','{long}','{long}',(#2));\n#11=PRODUCT_DEFINITION_FORMATION('{long}','',#10);\n"
           "#12=PRODUCT_DEFINITION('','',#11,$);\n"
           f"#20=PRODUCT('leaf','leaf','',(#2));\n#21=PRODUCT_DEFINITION_FORMATION('','',#20);\n"
           "#22=PRODUCT_DEFINITION('','',#21,$);\n"
           f"#30=NEXT_ASSEMBLY_USAGE_OCCURRENCE('{long}','{long}','{long}',#12,#22,'{long}');\n"
           f"#40=PRESENTATION_LAYER_ASSIGNMENT('{long}','{long}',(#12));\n"
           f"#50=PROPERTY_DEFINITION('user defined attribute','{long}',#12);\n"
           f"#51=DESCRIPTIVE_REPRESENTATION_ITEM('{long}','{long}');\n#52=REPRESENTATION('{long}',(#51),#53);\n"
           "#53=REPRESENTATION_CONTEXT('','');\n#54=PROPERTY_DEFINITION_REPRESENTATION(#50,#52);\n")


def text(count):
    for i in range(1, 101):
        yield f"#{i}=NOTE('{chr(97 + i % 26) * count}',#{i % 100 + 1});\n"


KINDS = {each.__name__: each for each in (edges, products, occurrences, placed, shapes, triangles, instances, name, text)}


def write(kind, count, path):
    """Writes a document and returns its path."""
    with open(path, "w", encoding="ascii", buffering=1 << 20) as target:
        target.write(HEADER)
        for piece in KINDS[kind](count):
            target.write(piece)
        target.write(FOOTER)
    return path


if __name__ == "__main__":
    if len(sys.argv) != 4 or sys.argv[1] not in KINDS:
        sys.exit(__doc__)
    write(sys.argv[1], int(sys.argv[2]), sys.argv[3])
