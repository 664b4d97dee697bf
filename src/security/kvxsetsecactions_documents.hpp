/// @file
/// The trees of the secure-action exchange. Each operation builds its document in an empty one and
/// returns the root; texts may be null where the writer's may.

#ifndef KOVRA_SECURITY_KVXSETSECACTIONS_DOCUMENTS_HPP
#define KOVRA_SECURITY_KVXSETSECACTIONS_DOCUMENTS_HPP

#include <tinyxml.h>

#include "security/security_tables.hpp"

namespace Kovra {

/// A root with nothing but a text: "nonce", "passkey".
TiXmlElement* buildText(TiXmlDocument& document, char const* root, char const* text);
TiXmlElement* buildRequest(TiXmlDocument& document, _tagSecActionXMLValues const& values);
TiXmlElement* buildDirective(TiXmlDocument& document, _tagSecActionXMLValues const& values,
                             int timeout);
TiXmlElement* buildKeys(TiXmlDocument& document, _tagSecKeys const& keys);
/// `parts` are of KeyChange.
TiXmlElement* buildKeyChange(TiXmlDocument& document, KeyChangeTexts const& texts,
                             frame::typed::Circumstances parts);

}  // namespace Kovra

#endif
