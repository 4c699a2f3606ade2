#include "CorvaneCore/widgets/clipboard/WebAddress.hpp"
#include "CorvaneCore/widgets/clipboard/WebPreviewPage.hpp"

#include <gtest/gtest.h>

using namespace corvane;

TEST(WebPreviewPage, MetaTagsMatchByPropertyOrNameInEitherQuoteAndEitherOrder) {
    auto html = R"(<html><head>
        <META content="Content first" property="og:title">
        <meta name='description' content='Single &amp; quoted'>
        <meta property="og:description"
              content="Open Graph wins &#8212; over the plain one">
        <meta property=og:image content=/images/card.png>
        <title>Fallback</title></head></html>)";
    auto page = WebPreviewPage::read(html);
    EXPECT_EQ(page.title, "Content first");
    EXPECT_EQ(page.description, "Open Graph wins \u2014 over the plain one");
    EXPECT_EQ(page.imageReference, "/images/card.png");
    EXPECT_EQ(WebPreviewPage::metaContent(html, "description"), "Single & quoted");

    // A quote of the other kind inside a value ends nothing; "<metadata>" is not a meta tag.
    EXPECT_EQ(WebPreviewPage::metaContent(R"(<metadata name="og:title" content="no"><meta content="It's here" name="og:title">)",
                                          "og:title"),
              "It's here");
    // Empty content counts as none, so the next candidate is tried.
    EXPECT_EQ(WebPreviewPage::read(R"(<meta property="og:title" content="  "><title>Real</title>)").title, "Real");
    // Cut-off pages never read past their end.
    EXPECT_EQ(WebPreviewPage::metaContent(R"(<meta property="og:title" content="unterminated)", "og:title"),
              "unterminated");
    EXPECT_EQ(WebPreviewPage::metaContent("<meta property=", "og:title"), std::nullopt);
}

TEST(WebPreviewPage, TitleElementFallbackFollowsTheTagPattern) {
    EXPECT_EQ(WebPreviewPage::titleElement("<title data-x=\"1\">  Caf&eacute; &lt;3  </title>"), "Caf\u00e9 <3");
    EXPECT_EQ(WebPreviewPage::titleElement("<titles>no</titles><title>yes</title>"), "yes");
    EXPECT_EQ(WebPreviewPage::titleElement("<title><b>no</b></title>"), std::nullopt);
    EXPECT_EQ(WebPreviewPage::titleElement("<title></title>"), std::nullopt);
    EXPECT_EQ(WebPreviewPage::titleElement("<title>open"), std::nullopt);
}

TEST(WebPreviewPage, EntitiesDecodeNamedAndNumericFormsAndLeaveTheRest) {
    EXPECT_EQ(WebPreviewPage::decodeEntities("&quot;A&quot; &amp;amp; &#39;b&#x27; &#X1F600; &hellip;"),
              "\"A\" &amp; 'b' \U0001F600 \u2026");
    EXPECT_EQ(WebPreviewPage::decodeEntities("AT&T; &unknown; & &#xD800; &#0; &#99999999; &#12a;"),
              "AT&T; &unknown; & \uFFFD \uFFFD \uFFFD &#12a;");
    EXPECT_EQ(WebPreviewPage::decodeEntities("no semicolon &amp here"), "no semicolon &amp here");
}

TEST(WebPreviewPage, ImageReferencesResolveAgainstThePage) {
    auto page = WebAddress::parse("https://Example.com:8443/blog/post.html?x=1");
    ASSERT_TRUE(page);
    EXPECT_EQ(page->host, "example.com");
    EXPECT_EQ(page->resolve("https://cdn.example.com/a.png"), "https://cdn.example.com/a.png");
    EXPECT_EQ(page->resolve("//cdn.example.com/a.png"), "https://cdn.example.com/a.png");
    EXPECT_EQ(page->resolve("/a.png"), "https://example.com:8443/a.png");
    EXPECT_EQ(page->resolve("img/a.png"), "https://example.com:8443/blog/img/a.png");
    EXPECT_EQ(page->resolve("data:image/png;base64,AAAA"), std::nullopt);
    EXPECT_EQ(page->resolve("javascript:alert(1)"), std::nullopt);
}
