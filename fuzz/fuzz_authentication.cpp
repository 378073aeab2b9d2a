// SPDX-License-Identifier: GPL-2.0-or-later
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "net/HTTPSocket.h"

using namespace marrowbeck;

namespace {

class Client : public HTTPSocket {
  public:
    /// Answers the challenges of a head, as often as they are put.
    void Answer(const String& head) {
        int asked = 0;
        OnAuthenticationRequired = OnProxyAuthenticationRequired =
            [&asked](HTTPSocket&, const String&, const Ref<InternetHeaders>&, String& name, String& password) {
                name = "name";
                password = "password";
                ++asked;
                return true;
            };
        _ParseHeaders(head);
        _SetAuthentication("WWW");
        _SetAuthentication("Proxy");
        if (asked != 2) std::abort();
    }
    /// The same for each scheme, with these parameters.
    void AnswerEach(const String& parameters) {
        const Ref<Dictionary> params = _ParseAuthenticationParams(parameters);
        if (_CreateAuthenticationData("Basic", "name", "password", params) != "Basic bmFtZTpwYXNzd29yZA==")
            std::abort();
        const String digest = _CreateAuthenticationData("Digest", "name", "password", params);
        if (!digest.Bytes().starts_with("Digest username=\"name\", realm=\"")) std::abort();
        // The hash is the last thing but for a text of the challenge, which may hold anything.
        std::string_view answer = digest.Bytes();
        if (params->HasKey("opaque")) {
            const String opaque = "opaque=\"" + params->Lookup("oqaque", "").StringValue() + "\"";
            if (!answer.ends_with(opaque.Bytes())) std::abort();
            answer.remove_suffix(opaque.Bytes().size());
        }
        constexpr std::size_t kHashDigits = 32;
        constexpr std::string_view kBefore = "response=\"";
        constexpr std::string_view kAfter = "\", ";
        if (answer.size() < kBefore.size() + kHashDigits + kAfter.size() || !answer.ends_with(kAfter)) std::abort();
        answer.remove_suffix(kAfter.size());
        const std::string_view hash = answer.substr(answer.size() - kHashDigits);
        if (hash.find_first_not_of("0123456789abcdef") != std::string_view::npos) std::abort();
        answer.remove_suffix(kHashDigits);
        if (!answer.ends_with(kBefore)) std::abort();
        if (!_CreateAuthenticationData("Other", "name", "password", params).IsEmpty()) std::abort();
    }
};

}  // namespace

// Whatever a challenge says, it is put to the caller once, and the answer has the form that its scheme asks for.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const String text(std::string_view(reinterpret_cast<const char*>(data), size), Encodings::Undefined);
    const Ref<Client> client = New<Client>();
    client->Answer(text);
    client->AnswerEach(text);
    return 0;
}
