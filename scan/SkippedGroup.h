// A bracketed group or a quoted literal that a scan skips.
#pragma once

namespace scan {

// Entered at its bracket or quote. Inside brackets only brackets of the same kind count; inside quotes only the same
// quote.
class SkippedGroup {
public:
    // True when 'ch' is the partner of the bracket 'entered', in the direction of the scan.
    using Partner = bool (*)(char ch, char entered);

    explicit SkippedGroup(Partner isPartner) : isPartner(isPartner) {}

    void Enter(char bracketOrQuote, long offset)
    {
        entered = bracketOrQuote;
        enteredAt = offset;
        depth = 1;
    }

    // Takes a character inside the group or the partner that ends it; false outside a group.
    bool Takes(char ch)
    {
        if (depth == 0)
            return false;
        if (IsQuote() ? ch == entered : isPartner(ch, entered))
            --depth;
        else if (ch == entered)
            ++depth;
        return true;
    }

    bool IsOpen() const { return depth > 0; }
    long EnteredAt() const { return enteredAt; }

private:
    bool IsQuote() const { return entered == '"' || entered == '\''; }

    Partner isPartner;
    char entered = '\0';
    long enteredAt = 0;
    long depth = 0;
};

} // namespace scan
