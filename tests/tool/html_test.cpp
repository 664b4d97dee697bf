#include "html.hpp"

#include <gtest/gtest.h>

namespace Kovra::tool {

namespace {

TEST(Html, EscapesTheFiveCharactersThatMeanSomething) {
  EXPECT_EQ(escaped("a & <b> \"c\" 'd' &amp;"),
            "a &amp; &lt;b&gt; &quot;c&quot; &#39;d&#39; &amp;amp;");
  EXPECT_EQ(escaped(""), "");
}

TEST(Html, MakesPrintableWhatHasNoSign) {
  EXPECT_EQ(escaped("\x1b[2J\n\xff<\xe2\x80\xae"), "\\x1b[2J\\n\\xff&lt;\\u202e");
  EXPECT_EQ(escaped("für"), "für");
}

TEST(Html, IsolatesForeignTexts) {
  EXPECT_EQ(isolated("<אב>"), "<bdi>&lt;אב&gt;</bdi>");
}

}  // namespace

}  // namespace Kovra::tool
