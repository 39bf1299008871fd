"""Writes the instances of assemblies."""


class Assembly:
    """Products and their uses; each call returns the number of an instance.

        assembly = Assembly()
        wheel = assembly.product("wheel")
        cart = assembly.product("cart")
        assembly.use(cart, wheel, "w1")
        text = assembly.text
    """

    def __init__(self):
        self.lines = []
        self.last = 0
        self.context = self.add("APPLICATION_CONTEXT('design')")
        self.product_context = self.add(f"PRODUCT_CONTEXT('',#{self.context},'mechanical')")
        self.definition_context = self.add(f"PRODUCT_DEFINITION_CONTEXT('part definition',#{self.context},'design')")

    def add(self, record):
        self.last += 1
        self.lines.append(f"#{self.last}={record};\n")
        return self.last

    def product(self, name, identifier=None):
        """Returns the product definition."""
        product = self.add(f"PRODUCT('{identifier or name}','{name}','',(#{self.product_context}))")
        formation = self.add(f"PRODUCT_DEFINITION_FORMATION('1','',#{product})")
        return self.add(f"PRODUCT_DEFINITION('design','',#{formation},#{self.definition_context})")

    def use(self, parent, child, name=""):
        return self.add(f"NEXT_ASSEMBLY_USAGE_OCCURRENCE('{name}','{name}','',#{parent},#{child},$)")

    def attribute(self, definition, name, value):
        """Adds a user-defined attribute with a string."""
        owner = self.add(f"PROPERTY_DEFINITION('user defined attribute','',#{definition})")
        item = self.add(f"DESCRIPTIVE_REPRESENTATION_ITEM('{name}','{value}')")
        context = self.add("REPRESENTATION_CONTEXT('','')")
        representation = self.add(f"REPRESENTATION('{name}',(#{item}),#{context})")
        self.add(f"PROPERTY_DEFINITION_REPRESENTATION(#{owner},#{representation})")
        return owner

    def layer(self, name, description, item):
        return self.add(f"PRESENTATION_LAYER_ASSIGNMENT('{name}','{description}',(#{item}))")

    @property
    def text(self):
        return "".join(self.lines)
