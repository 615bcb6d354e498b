// What the symbols of Objective-C have beside their names.
#include "tagging/SourceParser.h"
#include "tagging/ctags/CtagsProgram.h"

#include "tests/support/TempDirectory.h"
#include "tests/tagging/SymbolTexts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>

namespace tagging {
namespace {

using testing::ElementsAre;

class ObjectiveCSymbols : public testing::Test {
protected:
    ObjectiveCSymbols() : signalBefore(std::signal(SIGPIPE, SIG_IGN)) {}
    ~ObjectiveCSymbols() override { std::signal(SIGPIPE, signalBefore); }

    std::vector<std::string> Of(const std::string& text)
    {
        const TempDirectory work;
        Settings settings;
        settings.ctags.program = *FindCtags("/");
        settings.ctags.temporaries = work.Path();
        const auto parsed = TextParser(settings).Parse("a.m", text, TextParser::Locals::No);
        return parsed ? TextsOf((*parsed)->symbols) : std::vector{parsed.Failure().Message()};
    }

    void (*const signalBefore)(int);
};

TEST_F(ObjectiveCSymbols, HaveBasesAndEnds)
{
    EXPECT_THAT(Of("@interface A : B <P, Q>\n@end\n"
                   "@interface Root <P>\n@end\n"
                   "@interface G<__covariant T> : B<T> <P>\n@end\n"
                   "@interface H : B<P>\n@end\n"
                   "@interface I : B<C *>\n@end\n"
                   "@protocol P <Q>\n@end\n"
                   "@interface A (Cat) <R>\n- (void)run;\n@end\n"
                   "@implementation A\n@end\n"
                   "@implementation A (Cat)\n- (void)run\n{\n    f();\n}\n\n@end\n"),
                ElementsAre("1-2 interface A : B,P,Q [declaration]", "3-4 interface Root : P [declaration]",
                            "5-6 interface G <__covariant T> : B,P [declaration]",
                            "7-8 interface H : B,P [declaration]", "9-10 interface I : B [declaration]",
                            "11-12 protocol P : Q", "13-15 category class:A::Cat : R [declaration]",
                            "14 method declaration class:A::run () -> void = Cat [declaration]",
                            "16-17 implementation A", "18-24 implementation class:A::Cat",
                            "19-22 method class:A::run () -> void = Cat"));
}

TEST_F(ObjectiveCSymbols, EndWithTheNextOneAndWithTheText)
{
    EXPECT_THAT(Of("@interface A\n- (void)f;\n@interface B\n\nint after;\n"),
                ElementsAre("1-2 interface A [declaration]", "2 method declaration class:A::f () -> void [declaration]",
                            "3-5 interface B [declaration]", "5 variable after -> int"));
}

TEST_F(ObjectiveCSymbols, OfMethodsHaveTypes)
{
    const auto method = [this](const std::string& declaration) {
        return Of("@protocol P\n" + declaration + "\n@end\n").at(1);
    };
    EXPECT_EQ(method("- (NSArray<NSString *> *)names;"),
              "2 method declaration class:P::names () -> NSArray<NSString *> * [declaration]");
    EXPECT_EQ(method("+ create;"), "2 class method declaration class:P::create () -> id [declaration]");
    EXPECT_EQ(method("- (void)setX:(int)x y:(NSString *)y;"),
              "2 method declaration class:P::setX:y: (int x,NSString * y) -> void [declaration]");
    EXPECT_EQ(method("- (nullable id)find:(nonnull const char *)name;"),
              "2 method declaration class:P::find: (const char * name) -> id [declaration]");
    EXPECT_EQ(method("- (void)each:(void (^)(id object, BOOL *stop))block;"),
              "2 method declaration class:P::each: (void (^)(id object,BOOL * stop) block) -> void [declaration]");
    EXPECT_EQ(method("- (id)with:first, ... NS_REQUIRES_NIL_TERMINATION;"),
              "2 method declaration class:P::with: (id first,...) -> id [declaration]");
}

TEST_F(ObjectiveCSymbols, OfVariablesAndPropertiesHaveTypes)
{
    EXPECT_THAT(
        Of("@interface A {\n"
           "    NSString *name, *other;\n"
           "    int count;\n"
           "@private\n"
           "    unsigned bits : 3;\n"
           "@public\n"
           "    IBOutlet NSView* view;\n"
           "    void (*callback)(int);\n"
           "    char text[16];\n"
           "}\n"
           "@property (nonatomic, copy) NSString *title, *subtitle;\n"
           "@property (copy) void (^done)(BOOL);\n"
           "@property (weak) IBOutlet id<Delegate> delegate;\n"
           "@end\n"),
        ElementsAre("1-14 interface A [declaration]", //
                    "2 field class:A::name -> NSString * [protected]",
                    "2 field class:A::other -> NSString * [protected]", "3 field class:A::count -> int [protected]",
                    "5 field class:A::bits -> unsigned [private]", "7 field class:A::view -> NSView * [public]",
                    "8 field class:A::callback -> void (*)(int) [public]", "9 field class:A::text -> char[16] [public]",
                    "11 property class:A::title -> NSString *", "11 property class:A::subtitle -> NSString *",
                    "12 property class:A::done -> void (^)(BOOL)", "13 property class:A::delegate -> id<Delegate>"));
}

TEST_F(ObjectiveCSymbols, HaveTheirExtensionsDeclarations)
{
    EXPECT_THAT(Of("@interface A () <P>\n@property int secret;\n@end\n@implementation A {\n    int own;\n}\n@end\n"),
                ElementsAre("2 property class:A::secret -> int", "4-7 implementation A",
                            "5 field class:A::own -> int [private]"));
}

} // namespace
} // namespace tagging
