#include "tests/app/AppTest.h"

namespace marrowbeck {

UpdateSite test::theSite;

UpdateSite UpdateSite::Configured() {
    return test::theSite;
}

}  // namespace marrowbeck
