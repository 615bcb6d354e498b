#include "generate/TagTemplates.h"

#include <gtest/gtest.h>

#include <string>

namespace {

// A template is written in pieces in its source; here it stands as a user meets it in the Worksheet, before the
// placeholders are filled in.
TEST(TagTemplates, AreTheseCommandLines)
{
    EXPECT_STREQ(kGenerateSystemCtags, R"(
# Execute the following line to generate tags for the system headers:
find $(SYSTEM_HEADERS_WHERE) ($(FILES_TO_INDEX_WILDCARDS) ) $(EXCLUDE_GCC) | $(CTAGS_TO_RUN) -I $(IGNORE_STRINGS) --c-kinds=+p --excmd=number -f $(SYSTEM_TAGS_DESTINATION) -L - )");
    EXPECT_STREQ(
        kIncludeSpecificCompiler,
        R"(find $(GCC_INCLUDE_DIRECTORY) | $(CTAGS_TO_RUN) -I $(IGNORE_STRINGS) --c-kinds=+p --excmd=number --language-force="C++" -f $(SYSTEM_TAGS_DESTINATION) -L - --append=yes
)");
    EXPECT_STREQ(kGenerateLocalCtags, R"(
# Execute the following line to generate tags in this directory:
find $(LOCAL_HEADERS_WHERE) ($(FILES_TO_INDEX_WILDCARDS) ) | $(CTAGS_TO_RUN) --c-kinds=+p --excmd=number -f $(LOCAL_TAGS_DESTINATION) -L -
)");
}

} // namespace
