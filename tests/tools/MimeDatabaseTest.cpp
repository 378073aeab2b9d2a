#include "tools/mime/MimeDatabase.h"

#include <gtest/gtest.h>

#include <QMimeDatabase>

#include "tests/tools/TestFiles.h"
#include "tools/mime/MimeComment.h"

namespace marrowbeck::tools {
namespace {

std::string byName(const MimeDatabase& database, const std::string& name, const std::string& content = {}) {
    return std::string(database.typeByName(name, [&content] { return content; }));
}

/// Qt has a type for what it does not know.
std::string known(const QMimeType& type) {
    return type.isDefault() ? std::string() : type.name().toStdString();
}

TEST(MimeDatabase, NamesTellTheSameTypeAsQtSays) {
    const MimeDatabase database;
    const QMimeDatabase reference;
    for (const char* const name : {"a.jpg",       "A.JPG",     "b.JpEg",         "c.jpe",    "d.png",     "e.tif",
                                   "e.TIFF",      "f.gif",     "g.webp",         "h.svg",    "h.svg.gz",  "i.heic",
                                   "j.avif",      "k.cr2",     "l.NEF",          "m.dng",    "n.psd",     "o.tar.gz",
                                   "p.C",         "p.c",       "q.txt",          "makefile", "Makefile",  "core",
                                   "Makefile.am", "libx.so.1", "CMakeLists.txt", "r.jpg~",   "s.xcf.bz2", "t.jp2",
                                   "a.b.png",     "ä.jpg",     "Ä.JPG",          "jpg.",     "jpg",       "",
                                   "x.pdf"})
        EXPECT_EQ(byName(database, name), known(reference.mimeTypeForFile(name, QMimeDatabase::MatchExtension)))
            << name;
    EXPECT_EQ(byName(database, "latin1 \xe9.jpg"), "image/jpeg");
}

TEST(MimeDatabase, ContentsTellTheSameTypeAsQtSays) {
    const MimeDatabase database;
    const QMimeDatabase reference;
    for (const auto& file : std::filesystem::directory_iterator(MARROWBECK_TEST_PICTURES)) {
        const std::string content = readFile(file.path());
        const QByteArray bytes = QByteArray::fromStdString(content);
        EXPECT_EQ(database.typeByContent("", content), known(reference.mimeTypeForData(bytes))) << file.path();
    }
}

TEST(MimeDatabase, NameGoesBeforeContentInASearch) {
    const MimeDatabase database;
    const std::string png = readFile(picture("rgb.png"));
    EXPECT_EQ(byName(database, "picture.jpg", png), "image/jpeg");
    EXPECT_EQ(byName(database, "picture", png), "image/png");
    EXPECT_EQ(byName(database, "picture.", "nothing known"), "");
}

TEST(MimeDatabase, ContentGoesBeforeNameForTheKind) {
    const MimeDatabase database;
    EXPECT_EQ(database.typeByContent("picture.jpg", readFile(picture("rgb.png"))), "image/png");
    EXPECT_EQ(database.typeByContent("raw.nef", readFile(picture("8-bit.tif"))), "image/x-nikon-nef");
    EXPECT_EQ(database.typeByContent("picture.jpg", "nothing known"), "image/jpeg");
    EXPECT_EQ(database.typeByContent("nothing", ""), "");
}

TEST(MimeDatabase, ImagesAreTheImageTypesAndTheirDescendants) {
    const MimeDatabase database;
    for (const char* const type : {"image/jpeg", "image/svg+xml", "image/x-canon-cr2", "video/x-mjpeg"})
        EXPECT_TRUE(database.isImage(type)) << type;
    for (const char* const type : {"", "application/pdf", "text/plain", "video/mpeg", "application/postscript"})
        EXPECT_FALSE(database.isImage(type)) << type;
    EXPECT_TRUE(database.inherits("image/x-adobe-dng", "image/tiff"));
    EXPECT_TRUE(database.inherits("image/jpeg", "image/pjpeg"));  // an older name
    EXPECT_FALSE(database.inherits("image/tiff", "image/x-adobe-dng"));
}

TEST(MimeDatabase, TheUsersOwnDatabaseGoesFirst) {
    // The description alone is enough for a kind; the folder is XDG_DATA_HOME of this test's private home.
    const std::string folder = qgetenv("XDG_DATA_HOME").toStdString() + "/mime/image";
    std::filesystem::create_directories(folder);
    std::ofstream(folder + "/jpeg.xml") << "<mime-type><comment>Photo &amp; graph</comment></mime-type>";
    EXPECT_EQ(MimeDatabase().comment("image/jpeg"), "Photo & graph");
    EXPECT_EQ(MimeDatabase().comment("image/png"), "PNG image");
    EXPECT_EQ(MimeDatabase().comment("image/unheard-of"), "");
    std::ofstream(folder + "/jpeg.xml") << "<mime-type><comment>Pho";
    EXPECT_NO_THROW(MimeDatabase().comment("image/jpeg"));
}

TEST(MimeComment, SpeaksTheUsersLanguage) {
    const TemporaryFolder folder;
    const std::string file = folder.write("type.xml",
                                          "<mime-type><comment>picture</comment><comment xml:lang='de'>Bild</comment>"
                                          "<comment xml:lang='pt_BR'>imagem</comment><glob pattern='x'/></mime-type>");
    EXPECT_EQ(mimeComment(file, {}), "picture");
    EXPECT_EQ(mimeComment(file, {"de_AT", "de"}), "Bild");
    EXPECT_EQ(mimeComment(file, {"pt_PT", "pt"}), "picture");
    EXPECT_EQ(mimeComment(file, {"pt_BR", "de"}), "imagem");
}

TEST(MimeComment, LanguagesComeFromTheLocale) {
    using List = std::vector<std::string>;
    setenv("LC_ALL", "de_AT.UTF-8", 1);
    EXPECT_EQ(userLanguages(), (List{"de_AT", "de"}));
    setenv("LANGUAGE", "sv:fr_CA", 1);
    EXPECT_EQ(userLanguages(), (List{"sv", "sv", "fr_CA", "fr", "de_AT", "de"}));
    setenv("LC_ALL", "C.UTF-8", 1);
    EXPECT_EQ(userLanguages(), List());
    setenv("LC_ALL", "sr_RS.UTF-8@latin", 1);
    unsetenv("LANGUAGE");
    EXPECT_EQ(userLanguages(), (List{"sr_RS@latin", "sr_RS", "sr@latin", "sr"}));
}

TEST(MimeCache, DamagedCachesAreReadWithoutHarm) {
    const std::string whole = readFile("/usr/share/mime/mime.cache");
    ASSERT_GT(whole.size(), 1000U);
    const TemporaryFolder folder;
    const std::string sample = readFile(picture("rgb.jpg"));
    for (size_t word = 4; word < 40; word += 4) {
        for (const char filler : {'\0', '\x7f', '\xff'}) {
            std::string damaged = whole;
            damaged.replace(word, 4, std::string(4, filler));
            const MimeCache cache(folder.write("mime.cache", damaged));
            std::vector<MimeCache::NameMatch> matches;
            cache.matchLiteral("makefile", true);
            cache.matchSuffixes("a.jpg", true, matches);
            cache.matchGlobs("a.jpg", true, matches);
            cache.matchContent(sample);
            cache.parents("image/x-adobe-dng");
        }
    }
    EXPECT_FALSE(MimeCache(folder.write("mime.cache", std::string(100, '\xff'))).isOpen());
    EXPECT_FALSE(MimeCache(folder.write("mime.cache", "")).isOpen());
}

}  // namespace
}  // namespace marrowbeck::tools
