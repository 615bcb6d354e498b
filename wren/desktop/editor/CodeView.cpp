#include "wren/desktop/editor/CodeView.h"

#include "wren/desktop/editor/Braces.h"
#include "wren/desktop/editor/CodeLexer.h"
#include "wren/text/TextChange.h"

#include <QFontMetrics>
#include <QMouseEvent>

#include <algorithm>
#include <cmath>
#include <utility>

namespace wren {

namespace {

constexpr int kNumbers = 0;                  // the margin of line numbers
constexpr long kBesideNumbers = 6;           // pixels between them and the text
constexpr double kHundredths = 100;          // Scintilla's unit of the size of fonts, of a point
constexpr long kFirstLine = 256;             // bytes that say which program reads a script
constexpr long kEnoughToDetect = 256 * 1024; // bytes that show what a file is indented with
constexpr size_t kVeryLong = 20'000;         // bytes of a line
constexpr long kWidthsOfLongLines = 1 << 16; // words

bool HasVeryLongLine(std::string_view bytes)
{
    while (bytes.size() > kVeryLong) {
        const size_t end = bytes.find_last_of("\r\n", kVeryLong);
        if (end == std::string_view::npos)
            return true;
        bytes.remove_prefix(end + 1);
    }
    return false;
}

} // namespace

CodeView::CodeView(QWidget* parent)
    : QsciScintilla(parent), text(*this), lines(text), groups(text), changes(text),
      lexer(std::make_unique<CodeLexer>()), self(std::make_shared<CodeView*>(this))
{
    look.font = QFont("DejaVu Sans Mono", 11);
    look.font.setStyleHint(QFont::Monospace);
    SetUp();
    SetUpKeys();
    WatchText();
    SetLook(look);
}

CodeView::~CodeView()
{
    // Scintilla reports updates while it ends, when nobody may ask it.
    disconnect(this, &CodeView::SCN_UPDATEUI, nullptr, nullptr);
    disconnect(this, &CodeView::SCN_MODIFIED, nullptr, nullptr);
    *self = nullptr;
    client = nullptr;
    if (sharesText)
        setDocument(QsciDocument()); // the base class takes the colours away from the one it has
    disconnect(this, nullptr, this, nullptr);
}

void CodeView::SetUp()
{
    setUtf8(true);
    setAutoCompletionSource(AcsNone);
    setCallTipsStyle(CallTipsNone);
    setFolding(NoFoldStyle);
    setBraceMatching(NoBraceMatch); // Scintilla's would read to the end of the file (ShowBraces)
    setTabIndents(true);
    setBackspaceUnindents(true);
    setCaretLineVisible(true);
    setCaretWidth(2);
    for (const int margin : {1, 2, 3, 4})
        setMarginWidth(margin, 0); // one of them is the folds'
    setMarginType(kNumbers, NumberMargin);
    text.Send(SCI_SETMARGINLEFT, 0, kBesideNumbers);
    text.Send(SCI_SETCARETLINEVISIBLEALWAYS, true);
    carets::SetUp(text);
    folds::SetUp(text);
    bookmarks::SetUp(text);
    changes.SetUp();
    text.Send(SCI_SETSCROLLWIDTH, 1);
    text.Send(SCI_SETSCROLLWIDTHTRACKING, true);
    text.Send(SCI_SETLAYOUTCACHE, SC_CACHE_PAGE);
    // Behind what is seen, from the event loop: going to the end of a big file shows it at once, and colours it later.
    text.Send(SCI_SETIDLESTYLING, SC_IDLESTYLING_TOVISIBLE);
    ApplyEnds(LineEnds::Unix);
}

void CodeView::WatchText()
{
    connect(this, &QsciScintillaBase::SCN_MODIFIED, this, &CodeView::TextModified);
    connect(this, &QsciScintillaBase::SCN_CHARADDED, this, &CodeView::CharacterAdded);
    connect(this, &QsciScintillaBase::SCN_SAVEPOINTLEFT, this, [this] { TellLater(false); });
    connect(this, &QsciScintillaBase::SCN_SAVEPOINTREACHED, this, [this] {
        changes.Forget();
        TellLater(false);
    });
    connect(this, &QsciScintillaBase::SCN_UPDATEUI, this, [this] {
        if (!sharesText) {
            changes.Changed();
            TellScreenReaders();
            ShowBraces();
        }
        if (numberedLines != text.Send(SCI_GETLINECOUNT))
            FitMargin();
        TellLater(false);
    });
    ListenToScintilla();
}

void CodeView::SetClient(CodeViewClient* newClient)
{
    client = newClient;
    changeUntold = false;
    toldCaret = Caret();
    toldModified = IsModified();
}

// ---------------------------------------------------------------------------------------------------------- The text

void CodeView::SetBytes(std::string_view bytes)
{
    groups.Close();
    PrepareForLongLines(bytes);
    if (client != nullptr)
        client->TextMoves(*this, 0, text.Length(), static_cast<long>(bytes.size()));
    readsAgain = true;
    ByStore([&] {
        text.Send(SCI_SETUNDOCOLLECTION, false);
        text.Send(SCI_CLEARALL);
        text.Send(SCI_ALLOCATE, static_cast<long>(bytes.size()));
        text.Replace(0, 0, bytes);
        text.Send(SCI_SETUNDOCOLLECTION, true);
        groups.Forget();
        text.Select(0, 0);
        text.Send(SCI_SETSAVEPOINT);
    });
    readsAgain = false;
    DetectEnds();
    ApplyIndentation();
    FitMargin();
}

void CodeView::ReadAgain(std::string_view bytes)
{
    const TextChange change = ChangeBetween(text.All(), bytes);
    const long caret = MovedPlace(Caret(), change);
    const long top = text.Send(SCI_POSITIONFROMLINE, text.Send(SCI_DOCLINEFROMVISIBLE, FirstVisibleLine()));
    groups.Close();
    PrepareForLongLines(bytes);
    if (client != nullptr)
        client->TextMoves(*this, change.offset, change.removed, change.inserted);
    readsAgain = true;
    ByStore([&] {
        groups.Replace(change.offset, change.offset + change.removed,
                       bytes.substr(static_cast<size_t>(change.offset), static_cast<size_t>(change.inserted)));
        text.Select(caret, caret);
        text.Send(SCI_SETSAVEPOINT);
    });
    readsAgain = false;
    ShowFromLine(text.Send(SCI_VISIBLEFROMDOCLINE, text.Send(SCI_LINEFROMPOSITION, MovedPlace(top, change))));
    DetectEnds();
    ApplyIndentation();
    FitMargin();
}

std::string CodeView::Bytes() const
{
    return text.All();
}

bool CodeView::IsModified() const
{
    return text.Send(SCI_GETMODIFY) != 0;
}

void CodeView::MarkSaved()
{
    text.Send(SCI_SETSAVEPOINT);
    TellState();
}

long CodeView::Caret() const
{
    return text.Send(SCI_GETCURRENTPOS);
}

void CodeView::GoTo(long offset)
{
    offset = std::clamp(offset, 0L, text.Length());
    const long first = text.Send(SCI_GETFIRSTVISIBLELINE);
    const long seen = text.Send(SCI_LINESONSCREEN);
    folds::Reveal(text, offset);
    text.Select(offset, offset);
    const long line = text.Send(SCI_VISIBLEFROMDOCLINE, text.Send(SCI_LINEFROMPOSITION, offset));
    if (line < first || line >= first + seen)
        text.Send(SCI_SETFIRSTVISIBLELINE, std::max(line - seen / 2, 0L));
    text.Send(SCI_CHOOSECARETX);
    TellState();
}

long CodeView::FirstVisibleLine() const
{
    return SendScintilla(SCI_GETFIRSTVISIBLELINE);
}

void CodeView::ShowFromLine(long line)
{
    SendScintilla(SCI_SETFIRSTVISIBLELINE, static_cast<unsigned long>(std::max(line, 0L)));
}

void CodeView::SetTopMargin(int pixels)
{
    if (viewportMargins().top() != pixels)
        setViewportMargins(0, pixels, 0, 0);
}

void CodeView::GoToLine(long line)
{
    GoTo(lines.LineStart(line - 1));
}

// A key in a line has Scintilla measure all of it, word by word; Qt takes microseconds for each that is not remembered.
// The usual thousand would be forgotten before the next key. The memory is spent only where there is such a line.
void CodeView::PrepareForLongLines(std::string_view coming)
{
    if (hasVeryLongLines || !HasVeryLongLine(coming))
        return;
    hasVeryLongLines = true;
    text.Send(SCI_SETPOSITIONCACHE, kWidthsOfLongLines);
}

// ------------------------------------------------------------------------------------------------------------- Looks

void CodeView::SetLook(const EditorLook& newLook)
{
    look = newLook;
    lexer->SetLook(look);
    const std::vector<long> folded = folds::Folded(text);
    setLexer(lexer.get());
    // Which branch of an #ifdef is compiled is not known here: none is greyed.
    text.Send(SCI_SETPROPERTY, reinterpret_cast<intptr_t>("lexer.cpp.track.preprocessor"), "0");
    ApplyColours();
    folds::SetLook(text, look);
    bookmarks::SetLook(text, look);
    changes.SetLook(look);
    folds::FoldAgain(text, folded);
    carets::SetLook(text, look.dark);
    setWrapMode(look.wraps ? WrapWord : WrapNone);
    setWrapIndentMode(WrapIndentSame);
    setWhitespaceVisibility(look.showsBlanks ? WsVisible : WsInvisible);
    text.Send(SCI_SETINDENTATIONGUIDES, look.showsGuides ? SC_IV_LOOKBOTH : SC_IV_NONE);
    ApplyIndentation();
    FitMargin();
    emit LookSet();
}

void CodeView::SetLanguageFor(const std::string& named)
{
    path = named;
    lexer->SetLanguageFor(path, text.Copy(0, std::min(text.Length(), kFirstLine)));
    lexer->SeparateWords(hasVeryLongLines);
    SetLook(look);
}

// A view that gets its look has its document coloured from the beginning: it gets the look with an empty one.
void CodeView::ShareTextOf(const CodeView& owner)
{
    const Selection selected = sharesText ? text.Selected() : Selection();
    const long top = sharesText ? FirstVisibleLine() : 0;
    const std::vector<long> folded = sharesText ? folds::Folded(text) : std::vector<long>();
    setDocument(QsciDocument());
    sharesText = true;
    path = owner.path;
    lexer->SetLanguageFor(path, owner.text.Copy(0, std::min(owner.text.Length(), kFirstLine)));
    lexer->SeparateWords(owner.hasVeryLongLines);
    SetConfig(owner.config);
    SetLook(owner.look);
    setDocument(owner.document());
    if (owner.hasVeryLongLines)
        text.Send(SCI_SETPOSITIONCACHE, kWidthsOfLongLines);
    FitMargin();
    FollowMarksOf(owner);
    folds::FoldAgain(text, folded);
    text.Select(selected.start, selected.end);
    ShowFromLine(top);
}

void CodeView::FollowMarksOf(const CodeView& owner)
{
    constexpr std::pair<unsigned, unsigned> kLooks[] = {{SCI_INDICGETSTYLE, SCI_INDICSETSTYLE},
                                                        {SCI_INDICGETFORE, SCI_INDICSETFORE},
                                                        {SCI_INDICGETALPHA, SCI_INDICSETALPHA},
                                                        {SCI_INDICGETOUTLINEALPHA, SCI_INDICSETOUTLINEALPHA},
                                                        {SCI_INDICGETUNDER, SCI_INDICSETUNDER}};
    for (long indicator = INDIC_CONTAINER; indicator <= INDIC_MAX; ++indicator)
        for (const auto& [get, set] : kLooks)
            if (const long wanted = owner.text.Send(get, indicator); wanted != text.Send(get, indicator))
                text.Send(set, indicator, wanted);
    SetTopMargin(owner.viewportMargins().top());
}

void CodeView::ApplyColours()
{
    const EditorColours& colours = ColoursOf(look.dark);
    for (const int style : {STYLE_LINENUMBER, STYLE_BRACELIGHT, STYLE_BRACEBAD, STYLE_CONTROLCHAR, STYLE_INDENTGUIDE})
        SetStyle(style, colours.text, colours.paper);
    SetStyle(STYLE_LINENUMBER, colours.lineNumbers, colours.margin);
    SetStyle(STYLE_INDENTGUIDE, colours.occurrence, colours.paper);
    SetStyle(STYLE_BRACELIGHT, colours.text, colours.brace);
    SetStyle(STYLE_BRACEBAD, colours.text, colours.badBrace);
    setCaretForegroundColor(colours.text);
    setCaretLineBackgroundColor(colours.caretLine);
    setSelectionBackgroundColor(colours.selection);
    text.Send(SCI_SETSELFORE, false); // selected text keeps its colours
    text.Send(SCI_SETSELEOLFILLED, true);
    setWhitespaceForegroundColor(colours.lineNumbers);
    setEdgeColor(colours.occurrence);
}

void CodeView::SetStyle(int style, const QColor& ink, const QColor& paper)
{
    SendScintilla(SCI_STYLESETFORE, style, ink);
    SendScintilla(SCI_STYLESETBACK, style, paper);
    text.Send(SCI_STYLESETFONT, style, look.font.family().toUtf8().constData());
    text.Send(SCI_STYLESETSIZEFRACTIONAL, style, std::lround(look.font.pointSizeF() * kHundredths));
}

void CodeView::ApplyIndentation()
{
    const long enough = std::min(text.Length(), kEnoughToDetect);
    const int tabWidth = config.tabWidth.value_or(config.usesTabs.value_or(false) ? config.level.value_or(look.tabWidth)
                                                                                  : look.tabWidth);
    indentation = DetectIndentation(text.Copy(0, enough), {look.indentsWithTabs, tabWidth});
    indentation.tabs = config.usesTabs.value_or(indentation.tabs);
    indentation.width = indentation.tabs ? tabWidth : config.level.value_or(indentation.width);
    setTabWidth(tabWidth);
    setIndentationsUseTabs(indentation.tabs);
    setIndentationWidth(indentation.width);
}

void CodeView::SetConfig(const EditorConfig& newConfig)
{
    if (config == newConfig)
        return;
    config = newConfig;
    ApplyIndentation();
    setEdgeMode(config.longestLine ? EdgeLine : EdgeNone);
    if (config.longestLine)
        setEdgeColumn(*config.longestLine);
    if (config.ends && text.Send(SCI_GETLINECOUNT) == 1)
        ApplyEnds(*config.ends);
}

void CodeView::TidyForSaving()
{
    const bool converts = config.ends && HasOtherEnds(*config.ends);
    if (!config.trimsBlanks && !config.endsLastLine && !converts)
        return;
    ByUser([&] {
        text.Send(SCI_BEGINUNDOACTION);
        if (converts)
            ConvertEnds(*config.ends);
        if (config.trimsBlanks)
            TrimLineEnds(text);
        if (config.endsLastLine)
            EndLastLine(text);
        text.Send(SCI_ENDUNDOACTION);
    });
}

void CodeView::FitMargin()
{
    numberedLines = text.Send(SCI_GETLINECOUNT);
    const size_t digits = std::max<size_t>(3, std::to_string(numberedLines).size());
    setMarginWidth(kNumbers, QString(static_cast<int>(digits) + 1, '9'));
}

void CodeView::recolor(int, int) {}

void CodeView::ShowBraces()
{
    const long caret = Caret();
    for (const long at : {caret - 1, caret}) {
        if (!braces::IsBrace(text, at))
            continue;
        const braces::Partner partner = braces::FindPartner(text, at);
        if (partner.offset)
            text.Send(SCI_BRACEHIGHLIGHT, at, *partner.offset);
        else
            text.Send(SCI_BRACEBADLIGHT, partner.tooFar ? -1 : at);
        return;
    }
    text.Send(SCI_BRACEHIGHLIGHT, -1, -1);
}

std::optional<long> CodeView::PartnerOf(long offset) const
{
    return braces::IsBrace(text, offset) ? braces::FindPartner(text, offset).offset : std::nullopt;
}

// ------------------------------------------------------------------------------------------------------------ Places

BPoint CodeView::BaselineAt(long offset) const
{
    offset = std::clamp(offset, 0L, text.Length());
    const QPoint corner(static_cast<int>(text.Send(SCI_POINTXFROMPOSITION, 0, offset)),
                        static_cast<int>(text.Send(SCI_POINTYFROMPOSITION, 0, offset)));
    const QPoint where = viewport()->mapToGlobal(corner + QPoint(0, QFontMetrics(look.font).ascent()));
    return {static_cast<float>(where.x()), static_cast<float>(where.y())};
}

QRect CodeView::LineFrom(long offset) const
{
    offset = std::clamp(offset, 0L, text.Length());
    const QPoint corner(static_cast<int>(text.Send(SCI_POINTXFROMPOSITION, 0, offset)),
                        static_cast<int>(text.Send(SCI_POINTYFROMPOSITION, 0, offset)));
    const int height = static_cast<int>(text.Send(SCI_TEXTHEIGHT, text.Send(SCI_LINEFROMPOSITION, offset)));
    return {viewport()->mapToGlobal(corner), QSize(std::max(1, viewport()->width() - corner.x()), height)};
}

long CodeView::OffsetAtPoint(BPoint where) const
{
    return text.Send(SCI_POSITIONFROMPOINT, std::lround(where.x), std::lround(where.y));
}

BRect CodeView::TextBounds() const
{
    const QRect all = viewport()->rect();
    int left = 0;
    for (const int margin : {0, 1, 2, 3, 4})
        left += marginWidth(margin);
    return {static_cast<float>(left), 0, static_cast<float>(all.right()), static_cast<float>(all.bottom())};
}

BPoint CodeView::PointOf(const QMouseEvent& event) const
{
    return {static_cast<float>(event.position().x()), static_cast<float>(event.position().y())};
}

// ----------------------------------------------------------------------------------------------------------- Finding

bool CodeView::IsValid(const Search& search) const
{
    return TextFinder(text, search).IsValid();
}

bool CodeView::Find(const Search& search)
{
    return Show(TextFinder(text, search).FindNext(text.Selected()));
}

bool CodeView::FindFrom(long start, const Search& search)
{
    return Show(TextFinder(text, search).FindNext({start, start}));
}

bool CodeView::Show(const std::optional<TextFinder::Found>& found)
{
    if (!found)
        return false;
    GoTo(found->range.start);
    folds::Reveal(text, found->range.end);
    text.Select(found->range.start, found->range.end);
    TellState();
    return true;
}

long CodeView::Count(const Search& search, long atMost) const
{
    return TextFinder(text, search).Count(atMost);
}

bool CodeView::ReplaceSelected(const Search& search, const std::string& with)
{
    const TextFinder finder(text, search);
    const auto found = finder.At(text.Selected());
    const std::shared_ptr<CodeView*> alive = self;
    if (found)
        ByUser([&] {
            const long end = finder.Replace(*found, with);
            const long from = search.backwards ? found->range.start : end;
            text.Select(from, from);
        });
    if (*alive != nullptr)
        Find(search);
    return found.has_value();
}

void CodeView::Apply(LineCommand command, std::string_view commentMark)
{
    ByUser([&] {
        text.Send(SCI_BEGINUNDOACTION);
        ApplyToLines(text, command, commentMark);
        text.Send(SCI_ENDUNDOACTION);
    });
}

void CodeView::Apply(CaretCommand command)
{
    ByUser([&] { carets::Apply(text, command); });
}

void CodeView::Apply(FoldCommand command)
{
    ByUser([&] { folds::Apply(text, command); });
}

void CodeView::Apply(BookmarkCommand command)
{
    if (command == BookmarkCommand::Toggle)
        return bookmarks::Toggle(text);
    if (command == BookmarkCommand::RemoveAll)
        return bookmarks::SetLines(text, {});
    if (const std::optional<long> line = bookmarks::Next(text, command == BookmarkCommand::Previous))
        GoTo(text.Send(SCI_POSITIONFROMLINE, *line));
}

std::vector<long> CodeView::Bookmarks() const
{
    return bookmarks::Lines(text);
}

void CodeView::SetBookmarks(const std::vector<long>& marked)
{
    bookmarks::SetLines(text, marked);
}

std::vector<long> CodeView::ChangedLines()
{
    changes.Changed();
    return changes.Lines();
}

void CodeView::ReplaceAsTyped(long start, long end, std::string_view with)
{
    ByUser([&] {
        text.Send(SCI_BEGINUNDOACTION);
        text.Replace(start, end, with);
        const long caret = start + static_cast<long>(with.size());
        text.Select(caret, caret);
        text.Send(SCI_ENDUNDOACTION);
    });
}

long CodeView::ReplaceAll(const Search& search, const std::string& with)
{
    long count = 0;
    ByUser([&] {
        text.Send(SCI_BEGINUNDOACTION);
        count = TextFinder(text, search).ReplaceAll(with);
        text.Send(SCI_ENDUNDOACTION);
    });
    return count;
}

} // namespace wren
