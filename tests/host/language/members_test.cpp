/// Members of classes: which overload a call means, what it is given, and what comes back.

#include "tests/host/language/run_program.h"

namespace {

using host::Kind;
using host::Type;
using host::Value;

/// A class whose members answer with the declaration that was called and what they were given.
class Members : public testing::Test {
protected:
    Members() {
        host::Runtime& runtime = host_.runtime();
        const host::Registry::HostOwned own(runtime.registry());
        auto base = std::make_unique<host::Class>("Shape", runtime.findClass("Object"));
        addEcho(*base, "Area(scale As Double = 1.5) As String");
        addEcho(*base, "Draw(value As Integer) As String");
        addEcho(*base, "Draw(value As Double) As String");
        addEcho(*base, "Draw(value As String) As String");
        addEcho(*base, "Draw(value As Shape) As String");
        addEcho(*base, "Draw(value As Integer, other As Shape = Nil) As String");
        addEcho(*base, "Show(value As Variant) As String");
        addEcho(*base, "Fill(value As Single) As String");
        base->addMethod("Names() As String()", [](REALobjectStruct*, std::span<Value>) -> Value {
            host::ObjectRef list = host::newArray(Kind::String, 1);
            host::arrayOf(list)->elements[1] = "second";
            return list;
        });
        base->addMethod("Value(key As String) As String",
                        [this](REALobjectStruct*, std::span<Value> arguments) -> Value {
                            return stored_ + "@" + arguments[0].utf8();
                        });
        base->addMethod("Value(key As String, Assigns text As String)",
                        [this](REALobjectStruct*, std::span<Value> arguments) -> Value {
                            stored_ = arguments[0].utf8() + "=" + arguments[1].utf8();
                            return {};
                        });
        base->addMethod("Split(ByRef whole As Integer, ByRef rest As Double)",
                        [](REALobjectStruct*, std::span<Value> arguments) -> Value {
                            const double number = arguments[1].toDouble();
                            arguments[0] = static_cast<REALword>(number);
                            arguments[1] = number - static_cast<double>(static_cast<int>(number));
                            return {};
                        });
        base->addProperty(
            "Size", Kind::Double, [this](REALobjectStruct*) -> Value { return size_; },
            [this](REALobjectStruct*, const Value& value) { size_ = value.toDouble(); });
        base->addConstant("Sides", REALword{4});
        base->addConstant("Kind", Value("plane"));
        base->addSharedMethod("Named(name As String) As Shape",
                              [](REALobjectStruct*, std::span<Value> arguments) -> Value {
                                  if (arguments[0].utf8().empty()) return nullptr;
                                  return host::Runtime::current().newInstance("Circle");
                              });
        const host::Class& shape = runtime.addClass(std::move(base));
        auto derived = std::make_unique<host::Class>("Circle", &shape);
        addEcho(*derived, "Draw(value As Circle) As String");
        runtime.addClass(std::move(derived));
    }

    void addEcho(host::Class& type, const std::string& declaration) {
        type.addMethod(declaration, [declaration](REALobjectStruct*, std::span<Value> arguments) {
            std::string text = declaration.substr(0, declaration.find(')') + 1) + ":";
            for (const Value& argument : arguments)
                text += " " + (argument.kind() == Kind::Object ? argument.type().name()
                                                               : argument.utf8());
            return Value(text);
        });
    }

    /// What `Print expression` prints where `shape` is a Shape and `circle` a Circle.
    std::string printed(const std::string& expression) {
        return output("Dim shape As New Shape\nDim circle As New Circle\nPrint " + expression);
    }
    std::string output(const std::string& source) {
        const Ran ran = runInHost(source);
        if (!ran.error.empty()) return ran.error;
        return ran.output.substr(0, ran.output.size() - 1);
    }

    std::string stored_;
    double size_ = 0;
    Host host_{{.bare = true}};
};

} // namespace

TEST_F(Members, TheOverloadOfTheExactTypeIsCalled) {
    EXPECT_EQ(printed("shape.Draw(1.0)"), "Draw(value As Double): 1");
    EXPECT_EQ(printed("shape.Draw(\"x\")"), "Draw(value As String): x");
    EXPECT_EQ(printed("shape.Draw(shape)"), "Draw(value As Shape): Shape");
}

TEST_F(Members, FewerDefaultsAreBetter) {
    EXPECT_EQ(printed("shape.Draw(1)"), "Draw(value As Integer): 1");
    EXPECT_EQ(printed("shape.Draw(1, circle)"),
              "Draw(value As Integer, other As Shape = Nil): 1 Circle");
}

TEST_F(Members, ASubclassesOwnOverloadIsBetterForIt) {
    EXPECT_EQ(printed("circle.Draw(circle)"), "Draw(value As Circle): Circle");
    EXPECT_EQ(printed("circle.Draw(shape)"), "Draw(value As Shape): Shape");
    EXPECT_EQ(printed("shape.Draw(circle)"), "Draw(value As Shape): Circle");
    EXPECT_EQ(printed("circle.Draw(5)"), "Draw(value As Integer): 5");
}

TEST_F(Members, ArgumentsAreConvertedToTheDeclaredTypes) {
    EXPECT_EQ(printed("shape.Area(2)"), "Area(scale As Double = 1.5): 2");
    EXPECT_EQ(printed("shape.Fill(2.5)"), "Fill(value As Single): 2.5");
    EXPECT_EQ(printed("shape.Show(Nil)"), "Show(value As Variant): Nil");
    EXPECT_EQ(printed("shape.Show(circle)"), "Show(value As Variant): Circle");
}

TEST_F(Members, ADefaultArgumentIsFilledIn) {
    EXPECT_EQ(printed("shape.Area"), "Area(scale As Double = 1.5): 1.5");
    EXPECT_EQ(printed("shape.Area()"), "Area(scale As Double = 1.5): 1.5");
}

TEST_F(Members, NamesIgnoreCase) {
    EXPECT_EQ(printed("SHAPE.area(1)"), "Area(scale As Double = 1.5): 1");
    EXPECT_EQ(printed("shape.SIDES"), "4");
}

TEST_F(Members, ClassesHaveConstantsAndSharedMethods) {
    EXPECT_EQ(printed("Shape.Kind & Shape.Sides & Circle.Sides"), "plane44");
    EXPECT_EQ(printed("Shape.Named(\"a\") IsA Circle"), "True");
    EXPECT_EQ(printed("Circle.Named(\"\") Is Nil"), "True");
}

TEST_F(Members, AVariableHidesTheClassOfItsName) {
    EXPECT_EQ(output("Dim Circle As New Shape\nPrint Circle.Draw(Circle)"),
              "Draw(value As Shape): Shape");
}

TEST_F(Members, AnAssignmentCallsTheMethodThatTakesIt) {
    EXPECT_EQ(output("Dim s As New Shape\ns.Value(\"k\") = \"v\"\nPrint s.Value(\"q\")"), "k=v@q");
}

TEST_F(Members, PropertiesAreReadAndAssigned) {
    EXPECT_EQ(output("Dim s As New Shape\ns.Size = 3\nPrint s.Size / 2"), "1.5");
}

TEST_F(Members, ByRefArgumentsReceiveWhatTheMemberLeft) {
    EXPECT_EQ(output("Dim s As New Shape\nDim w As Integer\nDim r As Double = 2.5\n"
                     "s.Split w, r\nPrint w & \" \" & r"),
              "2 0.5");
}

TEST_F(Members, AnArrayThatAMethodReturnsCanBeIndexedAtOnce) {
    EXPECT_EQ(printed("shape.Names(1)"), "second");
    EXPECT_EQ(printed("shape.Names()(1)"), "second");
    EXPECT_EQ(printed("UBound(shape.Names)"), "1");
}

TEST_F(Members, ACastAllowsTheSubclassesMembers) {
    EXPECT_EQ(output("Dim s As Shape = Shape.Named(\"a\")\nDim c As Circle = Circle(s)\n"
                     "Print c.Draw(c)"),
              "Draw(value As Circle): Circle");
    EXPECT_EQ(output("Dim s As New Shape\nDim c As Circle = Circle(s)"),
              "2: IllegalCastException: Shape cannot be cast to Circle");
}

TEST_F(Members, IsAAnswersForSuperclassesAndNil) {
    EXPECT_EQ(printed("circle IsA Shape"), "True");
    EXPECT_EQ(printed("shape IsA Circle"), "False");
    EXPECT_EQ(output("Dim s As Shape\nPrint s IsA Shape"), "False");
}

TEST_F(Members, ObjectsAreComparedByIdentity) {
    EXPECT_EQ(printed("shape = shape And shape <> New Shape And shape Is shape"), "True");
    EXPECT_EQ(printed("shape Is circle Or shape = Nil"), "False");
}
