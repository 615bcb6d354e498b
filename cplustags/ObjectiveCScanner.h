// One reading of a source for its Objective-C constructs.
#pragma once

#include "cplustags/ObjectiveC.h"
#include "cplustags/ObjectiveCDeclarations.h"
#include "cplustags/SourceTokens.h"

#include <unordered_map>
#include <vector>

namespace cplustags {

// Collects the tokens of one declaration at a time, and says what it declares once it has ended. Everything else is left
// where it is. Used once.
class ObjectiveCScanner {
public:
    // Both are borrowed.
    ObjectiveCScanner(std::string_view text, const std::set<std::string>& ignored);

    ObjectiveCSource Read();

private:
    // The class, category or protocol being declared or implemented.
    struct Container {
        enum Kind : char { kNone, kInterface, kProtocol, kImplementation } kind = kNone;
        std::string_view scope; // "class:Name"
    };

    enum class Mode : char { kCode, kVariables, kBody };

    // What the branches of an #if begin with alike.
    struct State {
        Container container;
        Mode mode = Mode::kCode;
        unsigned depth = 0;              // of braces: in C code, in the body of a method
        unsigned parentheses = 0;        // of C code outside of braces; brackets too
        bool isInitializer = false;      // after a '=' of C code outside of braces
        bool variablesMayFollow = false; // right after the header of a class
    };

    // Why tokens are passed over.
    enum class Skip : char { kNo, kPutAway, kOtherBranch };

    struct Branches {
        State before;
        std::optional<State> afterFirst; // once there is a second
        Skip skip = Skip::kNo;
        Skip skipAround = Skip::kNo;
        bool isInDeclaration = false; // then only the first branch counts
        bool hadLive = false;
    };

    // A declaration of Objective-C that is not at its end.
    enum class Subject : char { kNone, kHeader, kHeaderRest, kMethod, kProperty, kVariable, kNames };
    struct Declaration {
        Subject subject = Subject::kNone;
        Token introducer; // the sign of a method, the keyword of the others
        std::vector<Token> tokens;
        unsigned parentheses = 0; // brackets too
        unsigned angles = 0;
        unsigned braces = 0;
        bool keepsBraces = false; // what is in them now
        size_t keptFrom = 0;      // of a variable's type: "struct Name { ... }" stays for the parser of C
        size_t keptTo = 0;
    };

    enum class Keyword : char { kNone, kEnd, kContainer, kProperty, kNames, kMark, kAccess };

    bool Next(Token& token);
    void PassOver(const Token& macro, bool withArguments);

    void OnDirective(const Token& token);
    void BeginBranches(const Directive& directive);
    void NextBranch(const Directive& directive);
    void EndBranches();

    void OnToken(const Token& token);
    void OnCode(const Token& token);
    void OnCodeOutsideOfBraces(const Token& token);
    void OnBrace(const Token& token);
    void OnBody(const Token& token);
    void OnVariables(const Token& token);
    void OnDeclaration(const Token& token);
    void OnBraceInDeclaration(const Token& token);
    void OnTokenInBraces(const Token& token);

    bool EndsDeclaration(const Token& token) const;
    bool EndsHeader(const Token& token) const;
    bool EndsNames(const Token& token) const;
    bool MayBeginMethod(const Token& token) const;
    bool IsMethodAfterMissingBrace(const Token& token) const;

    static Keyword KeywordOf(std::string_view word);
    Keyword KeywordAfterAt(Token& word);
    void OnKeyword(Keyword keyword, const Token& at, const Token& word);

    void Begin(Subject subject, const Token& introducer);
    void BeginBody(const Token& brace);
    void BeginVariables(const Token& brace);
    void BackToCode();
    void Add(const Token& token);

    void Finish();
    void FinishHeader();
    void FinishMethod();
    void FinishProperty();
    void FinishVariable();
    void EndStatement();

    void AddTag(const DeclaredName& name, char kind, std::string_view scope);
    void Blank(const Token& token);
    void BlankPending();

    std::string_view text;
    std::unordered_map<std::string_view, bool> ignored; // macro -> whether arguments go with it
    SourceTokens source;
    SourceTokens afterKeyword;
    ObjectiveCSource result;
    State state;
    std::vector<Branches> branches;
    Skip skip = Skip::kNo;
    Declaration declaration;
    Token last;                 // the one before, not passed over
    std::vector<Token> pending; // C code since the last end of a statement: it may be macros before a declaration
};

} // namespace cplustags
