#include "verify/verify_supports.h"

#include <algorithm>
#include <cmath>

#include "base/number_text.h"
#include "io/clean_name.h"
#include "verify/written_blocks.h"
#include "written/exact_space.h"

namespace verify {

namespace {

using inspect::eSdlBlock;

struct eSupport {
    std::string bone;
    std::vector<eVector> points;  // scene units, in the bone's space
};

std::vector<eSupport> SupportsOf(const eVerifiedScene& scene, const std::vector<host::INode*>& nodes) {
    std::vector<eSupport> supports;
    for (const host::INode* node : nodes) {
        const host::INode& above = *BoneAbove(*node);
        const std::string bone = CleanNodeName(above.GetName(), true);
        auto known = std::ranges::find(supports, bone, &eSupport::bone);
        if (known == supports.end()) {
            known = supports.insert(supports.end(), {bone, {}});
        }
        const host::DMatrix3 toBone = host::ExactInverse(NoScale(above.GetNodeTM(scene.StaticTime())));
        known->points.push_back(Through(Exact(node->GetNodeTM(scene.StaticTime()).GetTrans()), toBone));
    }
    return supports;
}

// How far a coordinate lies from what is left of it without its fraction; where single precision may have
// taken it over a whole number, both count.
double OffInteger(double wanted, double found) {
    constexpr double kSinglePrecision = 1e-4;
    const double slack = kSinglePrecision * (1 + std::fabs(wanted));
    const double nearer = std::trunc(wanted - std::copysign(slack, wanted));
    const double farther = std::trunc(wanted + std::copysign(slack, wanted));
    return std::min(std::fabs(found - nearer), std::fabs(found - farther));
}

double OffPoint(const eVector& wanted, const eSdlBlock& found) {
    const std::vector<std::string> words = found.Values();
    double off = words.size() == 3 ? 0 : 1e30;
    for (std::size_t i = 0; i < 3 && words.size() == 3; ++i) {
        off = std::max(off, OffInteger(wanted[i], ReadReal(words[i])));
    }
    return off;
}

void ComparePoints(const eVerifiedScene& scene, const eSupport& support, const eSdlBlock& written,
                   eFindings& findings) {
    const std::vector<const eSdlBlock*> found = written.Blocks("point");
    if (found.size() != support.points.size()) {
        return findings.Add("support points", 0, support.bone + " has " + std::to_string(found.size()));
    }
    for (std::size_t i = 0; i < found.size(); ++i) {
        const double units = OffPoint(support.points[i], *found[i]);
        if (units > 0) {
            findings.Add("support point", units * scene.MetresPerUnit(), support.bone);
        }
    }
}

}  // namespace

void CompareSupports(const eVerifiedScene& scene, const std::vector<host::INode*>& nodes,
                     const eWrittenModel& written, eFindings& findings) {
    eWrittenBlocks blocks(written.text.Find("SupportPoints"));
    for (const eSupport& support : SupportsOf(scene, nodes)) {
        if (const eSdlBlock* block = blocks.Take(support.bone, "support points", findings)) {
            ComparePoints(scene, support, *block, findings);
        }
    }
    blocks.TellRest("support points", findings);
}

}  // namespace verify
