// A header with the faults the reference check must report: a member and an
// enumerator without a comment, a reference to nothing and a link to no page.
#pragma once

/// A documented class holding one fault of each kind.
class CZxDocsProbe {
public:
    /// Documented.
    int Documented();
    int Undocumented();
    /// One enumerator documented, one not.
    enum EProbe { probeDocumented = 1 /**< has a comment */, probeBare = 2 };
    /// Refers to \ref CZxNoSuchClass and links to <a href="no-such-page.html">a missing page</a>.
    void Linked();
};
