#include "e2e/navigation/NavigationFixture.h"

namespace zovk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A way to write the address of a popup, and what the engine makes of it.
struct Form {
  const char* name;
  const char* uri;
  const char* written;  // as the engine writes it
  const char* path;     // as the server knows it
};

const Form kForms[] = {
    {"HostInCapitals", "http://LOCALHOST:{port}/own", "http://localhost:{port}/own", "/own"},
    {"SchemeInCapitals", "HTTP://127.0.0.1:{port}/own", "http://127.0.0.1:{port}/own", "/own"},
    {"Blank", "http://127.0.0.1:{port}/the page", "http://127.0.0.1:{port}/the%20page",
     "/the page"},
    {"LettersOutsideAscii", "http://127.0.0.1:{port}/\xC3\xA4\xE4\xB8\xAD",
     "http://127.0.0.1:{port}/%C3%A4%E4%B8%AD", "/\xC3\xA4\xE4\xB8\xAD"},
    {"WayBack", "http://127.0.0.1:{port}/x/../own", "http://127.0.0.1:{port}/own", "/own"},
    {"ParametersWithABlank", "http://127.0.0.1:{port}/x/../own?a=b c",
     "http://127.0.0.1:{port}/own?a=b%20c", "/own"},
    {"BlanksAround", " http://127.0.0.1:{port}/own ", "http://127.0.0.1:{port}/own", "/own"},
};

class AddressForm : public NavigationFixture, public testing::WithParamInterface<Form> {
 protected:
  std::string withPort(std::string address) {
    const std::string base = site().url("");
    return address.replace(address.find("{port}"), 6, base.substr(base.rfind(':') + 1));
  }
};

TEST_P(AddressForm, ShowsItsPage) {
  const std::string path = GetParam().path;
  site().page(path, arrivalPage());
  show(withPort(GetParam().uri));
  const std::string own = withPort(GetParam().written);
  EXPECT_EQ(pageTells(), own);
  EXPECT_THAT(decided(), ElementsAre(own));
  EXPECT_THAT(opener().opened(), IsEmpty());
}

TEST_P(AddressForm, KeepsPagesBelowItInside) {
  const std::string path = GetParam().path;
  site().page(path, page("location.href = location.pathname + '/below';"));
  site().page(path + "/below", arrivalPage());
  show(withPort(GetParam().uri));
  const std::string own = withPort(GetParam().written);
  const std::string below = own.substr(0, own.find('?')) + "/below";
  EXPECT_EQ(pageTells(), below);
  EXPECT_THAT(decided(), ElementsAre(own, below));
  EXPECT_THAT(opener().opened(), IsEmpty());
}

TEST_P(AddressForm, OpensOtherPagesOfItsSiteOutside) {
  const std::string path = GetParam().path;
  site().page(path, page("location.href = '/other'; tellLater();"));
  show(withPort(GetParam().uri));
  const std::string own = withPort(GetParam().written);
  const std::string other = own.substr(0, own.find('/', 8)) + "/other";
  awaitOpened(1);
  EXPECT_EQ(pageTells(), own);
  EXPECT_THAT(opener().opened(), ElementsAre(other));
  EXPECT_THAT(decided(), ElementsAre(own, other));
}

INSTANTIATE_TEST_SUITE_P(Forms, AddressForm, testing::ValuesIn(kForms),
                         [](const auto& form) { return std::string(form.param.name); });

}  // namespace
}  // namespace zovk
