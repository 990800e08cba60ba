#include "shell/modMethod.h"

namespace vrn::shell {

FontRule fontRuleFor(std::uint32_t lcid) noexcept {
    switch (lcid) {
        case 1042:  // Korean
            return {129, "굴림", 9};
        case 1028:  // Chinese, Taiwan
            return {136, "新細明體", 9};
        case 1041:  // Japanese
            return {128, "ＭＳ Ｐゴシック", 9};
        case 2052:  // Chinese, PRC
            return {134, "宋体", 9};
        default:
            return {1, "", 8};
    }
}

}  // namespace vrn::shell
