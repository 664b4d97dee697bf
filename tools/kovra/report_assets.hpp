/// @file
/// The style sheet and the script of the page. The build makes their definitions of the files in
/// report/.

#ifndef KOVRA_TOOL_REPORT_ASSETS_HPP
#define KOVRA_TOOL_REPORT_ASSETS_HPP

namespace Kovra::tool {

extern char const style[];
extern char const styleHash[];  ///< as a policy names it: "sha256-..."
extern char const script[];
extern char const scriptHash[];

}  // namespace Kovra::tool

#endif
