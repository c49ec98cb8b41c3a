#include "tests/tool/GameFileCreatorFixture.h"

class ModuleTest : public GameFileCreatorFixture
{
};

TEST_F(ModuleTest, AModuleLoadedIntoTheProgramUsesTheProgramsClasses)
{
    CKvProcessOptions options;
    options.environment = {std::string("LD_PRELOAD=") + KV_MODULE_PATH,
                           "KV_MODULE_OUTPUT=" + m_folder.Path("tree"),
                           // The sanitizer insists on being loaded first, which no module is.
                           "ASAN_OPTIONS=verify_asan_link_order=0"};
    const CKvProcessResult result = Run({}, options);
    EXPECT_EQ(result.status, 255) << result.standardError;
    EXPECT_EQ(m_folder.Read("tree"), std::string("\x0D\xAB\x69\xDB\x13\x35\xCE\xDD\2\0\0\0\0\0\0\0"
                                                 "\x25\xF9\xC9\x44\x54\x93\xB1\xAF\4\0\0\0box\0"
                                                 "\xB1\x78\xCF\x1E\x73\x33\xC3\xE4\2\0\0\0\3\0\0\0"
                                                 "\3\0\0\0entity\0name\0count\0",
                                                 70));
}
