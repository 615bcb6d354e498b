// Scans a source for Objective-C constructs.
#pragma once

#include "tagging/objectivec/ObjectiveC.h"
#include "tagging/objectivec/ObjectiveCDeclarations.h"
#include "tagging/objectivec/OpenDeclaration.h"
#include "tagging/tokens/Conditions.h"
#include "tagging/tokens/RestOfSource.h"
#include "tagging/tokens/SourceTokens.h"

#include <unordered_map>
#include <vector>

namespace tagging {

// Finds Objective-C declarations and makes their tags when they end. Everything else stays in place. For a single use.
class ObjectiveCScanner {
public:
    // Borrows both.
    ObjectiveCScanner(std::string_view text, const std::set<std::string>& ignored, Details wanted);

    ObjectiveCSource Read();

private:
    using Subject = OpenDeclaration::Subject;

    static constexpr size_t kNoTag = static_cast<size_t>(-1);

    // The class, category or protocol that is being declared or implemented.
    struct Container {
        enum Kind : char { kNone, kInterface, kProtocol, kImplementation } kind = kNone;
        std::string_view scope; // "class:Name"
        std::string_view category;
        size_t tag = kNoTag; // an extension has none
    };

    enum class Mode : char { Code, Variables, Body };

    struct State {
        Container container;
        Mode mode = Mode::Code;
        unsigned depth = 0;              // of braces: in C code, in the body of a method
        unsigned parentheses = 0;        // of C code outside of braces; brackets too
        bool isInitializer = false;      // after a '=' of C code outside of braces
        bool variablesMayFollow = false; // right after the header of a class
        ObjectiveCDetails::Access access = ObjectiveCDetails::Access::None; // of the next instance variables
    };

    enum class Keyword : char { None, End, Container, Property, Names, Mark, Access };

    bool Next(Token& token);
    bool PassesOver(const Token& token);
    void PassOver(const Token& macro, bool withArguments);
    void OnDirective(const Token& token);
    void OnEnumerationMacro(const Token& macro);

    void OnToken(const Token& token);
    void OnCode(const Token& token);
    void OnCodeOutsideOfBraces(const Token& token);
    void OnBrace(const Token& token);
    void OnBody(const Token& token);
    void OnVariables(const Token& token);
    void OnDeclaration(const Token& token);
    bool MayBeginMethod(const Token& token) const;
    bool IsMethodAfterMissingBrace(const Token& token) const;

    static Keyword KeywordOf(std::string_view word);
    Keyword KeywordAfterAt(Token& word);
    void OnKeyword(Keyword keyword, const Token& at, const Token& word);

    void Begin(Subject subject, const Token& introducer);
    void BeginBody(const Token& brace);
    void BeginVariables(const Token& brace);
    void BackToCode();
    void EndStatement();

    void Finish();
    void FinishHeader();
    void FinishMethod();
    void FinishProperty();
    void FinishVariable();
    void FinishHeaderRest();
    void EndContainer(unsigned line);
    ObjectiveCDetails& AddTag(const DeclaredName& name, char kind, std::string_view scope);
    ObjectiveCDetails* DetailsOf(size_t tag);
    void TakeOutPending();

    std::string_view text;
    const bool wantsDetails;
    std::unordered_map<std::string_view, bool> ignored; // macro -> whether arguments follow it
    SourceTokens source;
    SourceTokens afterKeyword;
    RestOfSource rest;
    tagsfile::Tags tags;
    std::vector<ObjectiveCDetails> details; // of each tag
    ObjectiveCDetails unwanted;             // where details go that nobody wants
    size_t method = kNoTag;                 // the last one, whose body may follow
    State state;
    Conditions<State> conditions;
    OpenDeclaration declaration;
    Token last;                 // the previous token
    std::vector<Token> pending; // C code since the end of the last statement: possible macros before a declaration
};

} // namespace tagging
