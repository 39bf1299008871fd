#!/usr/bin/env python3
"""Writes a STEP file of a given size for measurements.

    make_step.py brep 100M large.stp             solids with lines, circles, ellipses and B-splines, styled
    make_step.py boxes 3M boxes.stp              solids with straight edges only
    make_step.py brep 100M bad.stp --damage 0.01 the same, with a syntax error in each hundredth instance

The content depends on the arguments alone. A group of the `brep` form is a block with two drilled holes, an elliptical
and a spline-bounded face; of its instances about half are points, as in files of mechanical parts.
"""
import argparse
import math

HEADER = """ISO-10303-21;
HEADER;
FILE_DESCRIPTION((''),'2;1');
FILE_NAME('generated','2020-01-01T00:00:00',(''),(''),'','','');
FILE_SCHEMA(('AUTOMOTIVE_DESIGN { 1 0 10303 214 1 1 1 1 }'));
ENDSEC;
DATA;
"""
OPENING = """#1=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.MILLI.,.METRE.));
#2=(NAMED_UNIT(*)PLANE_ANGLE_UNIT()SI_UNIT($,.RADIAN.));
#3=(NAMED_UNIT(*)SI_UNIT($,.STERADIAN.)SOLID_ANGLE_UNIT());
#4=UNCERTAINTY_MEASURE_WITH_UNIT(LENGTH_MEASURE(1.E-07),#1,'distance_accuracy_value','');
#5=(GEOMETRIC_REPRESENTATION_CONTEXT(3)GLOBAL_UNCERTAINTY_ASSIGNED_CONTEXT((#4))\
GLOBAL_UNIT_ASSIGNED_CONTEXT((#1,#2,#3))REPRESENTATION_CONTEXT('',''));
#6=APPLICATION_CONTEXT('automotive_design');
#7=APPLICATION_PROTOCOL_DEFINITION('','automotive_design',2000,#6);
#8=PRODUCT_CONTEXT('',#6,'mechanical');
#9=PRODUCT('part','part','',(#8));
#10=PRODUCT_DEFINITION_FORMATION('','',#9);
#11=PRODUCT_DEFINITION_CONTEXT('part definition',#6,'design');
#12=PRODUCT_DEFINITION('design','',#10,#11);
#13=PRODUCT_DEFINITION_SHAPE('','',#12);
#14=SHAPE_DEFINITION_REPRESENTATION(#13,#15);
"""
FIRST_FREE = 15


class Numbers:
    """A linear congruential generator, the same in all versions of Python."""

    def __init__(self):
        self.state = 12345

    def next(self):
        self.state = (self.state * 6364136223846793005 + 1442695040888963407) % 2**64
        return (self.state >> 33) / 2**31


class StepFile:
    def __init__(self, path, damage):
        self.out = open(path, "w", encoding="ascii", newline="\n")
        self.size = 0
        self.last = FIRST_FREE
        self.damage = damage
        self.due = 0.0
        self.numbers = Numbers()
        self.instances = 0
        self.write(HEADER)
        for record in OPENING.splitlines(keepends=True):
            self.write_instance(record)

    def write(self, text):
        self.out.write(text)
        self.size += len(text)

    def write_instance(self, text):
        self.write(text)
        self.instances += 1

    def add(self, record):
        self.last += 1
        self.due += self.damage
        if self.due >= 1.0:
            self.due -= 1.0
            record = record.replace(",", ",,", 1)
        self.write_instance(f"#{self.last}={record};\n")
        return self.last

    def real(self, value):
        text = f"{value:.12g}"
        mantissa, _, exponent = text.partition("e")
        if "." not in mantissa:
            mantissa += "."
        return mantissa + ("E" + exponent if exponent else "")

    def triple(self, values):
        return "('',(" + ",".join(self.real(value) for value in values) + "))"

    def point(self, *values):
        return self.add("CARTESIAN_POINT" + self.triple(values))

    def direction(self, *values):
        length = math.sqrt(sum(value * value for value in values))
        return self.add("DIRECTION" + self.triple([value / length for value in values]))

    def vertex(self, place):
        return self.add(f"VERTEX_POINT('',#{self.point(*place)})"), place

    def placement(self, origin, axis, reference):
        names = self.point(*origin), self.direction(*axis), self.direction(*reference)
        return self.add("AXIS2_PLACEMENT_3D('',#%d,#%d,#%d)" % names)

    def edge(self, first, last, curve):
        return self.add(f"EDGE_CURVE('',#{first[0]},#{last[0]},#{curve},.T.)")

    def line(self, first, last):
        step = [b - a for a, b in zip(first[1], last[1])]
        vector = self.add(f"VECTOR('',#{self.direction(*step)},1.)")
        return self.edge(first, last, self.add(f"LINE('',#{self.point(*first[1])},#{vector})"))

    def loop(self, edges, outer=True):
        oriented = [self.add(f"ORIENTED_EDGE('',*,*,#{abs(each)},{'.T.' if each > 0 else '.F.'})") for each in edges]
        loop = self.add("EDGE_LOOP('',(" + ",".join(f"#{each}" for each in oriented) + "))")
        return self.add(f"FACE_{'OUTER_' if outer else ''}BOUND('',#{loop},.T.)")

    def face(self, bounds, surface):
        names = ",".join(f"#{each}" for each in bounds)
        return self.add(f"ADVANCED_FACE('',({names}),#{surface},.T.)")

    def box(self, x, y, z, size, bounds_of_top=()):
        """Returns the faces of a box."""
        corners = [
            self.vertex([x + size * (i & 1), y + size * (i >> 1 & 1), z + size * (i >> 2 & 1)]) for i in range(8)
        ]
        edges = {}
        for i in range(8):
            for axis in range(3):
                if not i >> axis & 1:
                    edges[i, i | 1 << axis] = self.line(corners[i], corners[i | 1 << axis])
        faces = []
        for number, ring in enumerate([(0, 4, 6, 2), (1, 3, 7, 5), (0, 1, 5, 4), (2, 6, 7, 3), (0, 2, 3, 1), (4, 5, 7, 6)]):
            pairs = [(ring[k], ring[(k + 1) % 4]) for k in range(4)]
            bounds = [self.loop([edges[p] if p in edges else -edges[p[1], p[0]] for p in pairs])]
            if number == 5:
                bounds += bounds_of_top
            axis = [0.0, 0.0, 0.0]
            axis[number // 2] = -1.0 if number % 2 == 0 else 1.0
            reference = [0.0, 1.0, 0.0] if number < 2 else [1.0, 0.0, 0.0]
            plane = self.add(f"PLANE('',#{self.placement(corners[ring[0]][1], axis, reference)})")
            faces.append(self.face(bounds, plane))
        return faces

    def hole(self, x, y, low, high, radius, kind="CIRCLE"):
        """Returns the faces of a hole, and the bound at its upper end."""
        radii = self.real(radius) if kind == "CIRCLE" else f"{self.real(radius)},{self.real(0.7 * radius)}"
        rings = []
        for z in (low, high):
            ends = self.vertex([x - radius, y, z]), self.vertex([x + radius, y, z])
            arcs = []
            for first, last in ((0, 1), (1, 0)):
                position = self.placement([x, y, z], [0.0, 0.0, 1.0], [1.0, 0.0, 0.0])
                arcs.append(self.edge(ends[first], ends[last], self.add(f"{kind}('',#{position},{radii})")))
            rings.append((ends, arcs))
        sides = [self.line(rings[0][0][i], rings[1][0][i]) for i in range(2)]
        faces = []
        for i in range(2):
            bound = self.loop([rings[0][1][i], sides[1 - i], -rings[1][1][i], -sides[i]])
            position = self.placement([x, y, low], [0.0, 0.0, 1.0], [1.0, 0.0, 0.0])
            faces.append(self.face([bound], self.add(f"CYLINDRICAL_SURFACE('',#{position},{self.real(radius)})")))
        return faces, self.loop([-each for each in rings[1][1]], outer=False)

    def spline(self, first, last, bulge):
        """Returns an edge on a cubic B-spline with 7 control points."""
        poles = []
        for k in range(7):
            share = k / 6
            place = [a + share * (b - a) for a, b in zip(first[1], last[1])]
            place[2] += bulge * math.sin(math.pi * share) + 0.01 * self.numbers.next() * (0 < k < 6)
            poles.append(self.point(*place))
        names = ",".join(f"#{each}" for each in poles)
        curve = self.add(
            f"B_SPLINE_CURVE_WITH_KNOTS('',3,({names}),.UNSPECIFIED.,.F.,.F.,(4,1,1,1,4),"
            "(0.,0.25,0.5,0.75,1.),.UNSPECIFIED.)"
        )
        return self.edge(first, last, curve)

    def spline_face(self, x, y, z, size):
        """Returns a face on a B-spline surface."""
        corners = [self.vertex([x + size * u, y + size * v, z]) for u, v in ((0, 0), (1, 0), (1, 1), (0, 1))]
        edges = [self.spline(corners[k], corners[(k + 1) % 4], 0.1 * size) for k in range(4)]
        rows = []
        for u in range(4):
            row = [self.point(x + size * u / 3, y + size * v / 6, z + 0.1 * size * self.numbers.next()) for v in range(7)]
            rows.append("(" + ",".join(f"#{each}" for each in row) + ")")
        surface = self.add(
            f"B_SPLINE_SURFACE_WITH_KNOTS('',3,3,({','.join(rows)}),.UNSPECIFIED.,.F.,.F.,.F.,(4,4),"
            "(4,1,1,1,4),(0.,1.),(0.,0.25,0.5,0.75,1.),.UNSPECIFIED.)"
        )
        return self.face([self.loop(edges)], surface)

    def group(self, number, is_straight):
        """Returns a solid."""
        x, y = 20.0 * (number % 100), 20.0 * (number // 100)
        if is_straight:
            faces = self.box(x, y, 0.0, 10.0)
        else:
            wave = self.numbers.next()
            first, upper = self.hole(x + 3.0 + wave, y + 3.0, 0.0, 10.0, 1.0 + wave)
            second, other = self.hole(x + 7.0, y + 7.0 + wave, 0.0, 10.0, 1.0 + wave / 2, "ELLIPSE")
            faces = self.box(x, y, 0.0, 10.0, [upper, other]) + first + second
            faces.append(self.spline_face(x + 10.0, y + wave, 0.0, 5.0 + wave))
        shell = self.add("CLOSED_SHELL('',(" + ",".join(f"#{each}" for each in faces) + "))")
        solid = self.add(f"MANIFOLD_SOLID_BREP('',#{shell})")
        if not is_straight:
            colour = self.add(f"COLOUR_RGB('',{self.real(round(wave, 1))},0.5,0.25)")
            fill = self.add(f"FILL_AREA_STYLE_COLOUR('',#{colour})")
            area = self.add(f"SURFACE_STYLE_FILL_AREA(#{self.add(f'FILL_AREA_STYLE({chr(39)*2},(#{fill}))')})")
            usage = self.add(f"SURFACE_STYLE_USAGE(.BOTH.,#{self.add(f'SURFACE_SIDE_STYLE({chr(39)*2},(#{area}))')})")
            style = self.add(f"PRESENTATION_STYLE_ASSIGNMENT((#{usage}))")
            self.add(f"STYLED_ITEM('',(#{style}),#{solid})")
        return solid

    def close(self, solids):
        names = ",".join(f"#{each}" for each in solids)
        self.write_instance(f"#15=ADVANCED_BREP_SHAPE_REPRESENTATION('',({names}),#5);\n")
        self.write("ENDSEC;\nEND-ISO-10303-21;\n")
        self.out.close()


def make(form, size, path, damage=0.0):
    """Writes a file of at least that many bytes, and returns the number of its instances."""
    target = StepFile(path, damage)
    solids = []
    while target.size < size:
        solids.append(target.group(len(solids), form == "boxes"))
    target.close(solids)
    return target.instances


def size_of(text):
    factor = {"K": 1_000, "M": 1_000_000, "G": 1_000_000_000}.get(text[-1].upper())
    return int(float(text[:-1]) * factor) if factor else int(text)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("form", choices=["brep", "boxes"])
    parser.add_argument("size", type=size_of, help="in bytes; K, M and G are powers of 1000")
    parser.add_argument("path")
    parser.add_argument("--damage", type=float, default=0.0, help="share of instances with a syntax error")
    arguments = parser.parse_args()
    make(arguments.form, arguments.size, arguments.path, arguments.damage)


if __name__ == "__main__":
    main()
