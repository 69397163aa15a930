#include "store/layouts/allergies.h"

#include "store/layouts/construction.h"

namespace vdx::disposition {

std::vector<Disposition> FamilleAllergies() {
    std::vector<Disposition> d;
    {
        using namespace VDXWCCCO;
        d.push_back(Fixe("VDXWCCCO", Longueur, {CodeConcept, CodeComposant},
                         {Sur({P(CodeConcept), P(CodeComposant)}), Sur({P(CodeComposant), P(CodeConcept)})}));
    }
    {
        using namespace VDXWALCR;
        d.push_back(Fixe("VDXWALCR", Longueur, {CodeConcept, ConceptCroise}, {Sur({P(CodeConcept), P(ConceptCroise)})}));
    }
    {
        using namespace VDXWSYNC;
        d.push_back(Fixe("VDXWSYNC", Longueur, {CodeSubstance, CodeSynonyme}, {Sur({P(CodeSubstance), P(CodeSynonyme)})}));
    }
    for (const char* table : {"VDXWPACO", "VDXWAMCO", "VDXWCTCO"}) d.push_back(Concept(table));
    d.push_back(Vocabulaire("VDXWDICO"));
    {
        using namespace VDXWPEFI;
        const PartieCle parent = P(CodeParent, 5, Pli::Decimal), enfant = P(CodeEnfant, 5, Pli::Decimal);
        d.push_back(Fixe("VDXWPEFI", Longueur, {CodeParent, CodeEnfant}, {Sur({parent, enfant}), Sur({enfant, parent})}));
    }
    return d;
}

}  // namespace vdx::disposition
