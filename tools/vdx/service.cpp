// vdx serve: the library as a local HTTP/JSON service. The library serves
// one thread of one process, so the service is a master and N worker
// processes forked after the listening socket is bound: each worker has its
// own connection to the base and takes the connections of the shared socket
// one at a time, on its only thread. The master replaces a worker that dies.
#include <signal.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <httplib.h>
#include <iostream>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>
#include <thread>

#include "platform/codepage.h"
#include "session/codes.h"
#include "store/catalogue.h"
#include "tools/vdx/commandes.h"
#include "tools/vdx/consultation.h"
#include "tools/vdx/requetes.h"
#include "tools/vdx/service_fichiers.h"

namespace vdx {
namespace {

constexpr char AideServe[] =
    "usage: vdx serve --base BASE [--listen HOST:PORT] [--workers N] [--timeout SECONDS]\n"
    "\n"
    "Serves BASE over HTTP as JSON, on 127.0.0.1:8080 unless told (port 0: any\n"
    "free port, printed at start): GET /v1/products/CODE, GET\n"
    "/v1/products?q=TEXT&after=LABEL&limit=N, POST /v1/check (the content of\n"
    "vdx check --json), POST /v1/check/report (its pages), GET /v1/base, GET\n"
    "/openapi.json, and at / a page to check a prescription in a browser. N\n"
    "worker processes (2 by default), each with its own connection; one that\n"
    "dies is replaced. A request whose bytes stop coming for SECONDS (5) is\n"
    "dropped. SIGTERM or SIGINT stops the service.\n";

constexpr char TypeJson[] = "application/json; charset=utf-8";
// The exit code of a worker that cannot connect to the base: the service stops.
constexpr int SortieSansBase = 3;

struct Reglages {
    std::string base, hote = "127.0.0.1";
    int port = 8080, travailleurs = 2, delai = 5;
};

// A server whose listening socket can be tuned once bound.
class Serveur : public httplib::Server {
public:
    int Socket() const { return svr_sock_; }
};

// Each connection handled in the thread that accepted it: a worker's only thread.
class FileEnLigne : public httplib::TaskQueue {
public:
    void enqueue(std::function<void()> tache) override { tache(); }
    void shutdown() override {}
};

// The directory where a worker writes the reports it reads back.
std::string dossierRapports;

void Repond(httplib::Response& r, int statut, std::string json) {
    r.status = statut;
    r.set_content(std::move(json), TypeJson);
}

void RepondEchec(httplib::Response& r, const EchecAppel& e) {
    char texte[300];
    Repond(r, 500, EchecJson(e, codepage::VersUtf8(GetLastError_Vdx(texte))));
}

std::string Dump(const nlohmann::ordered_json& j) { return j.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace); }

nlohmann::ordered_json TexteOuNul(const std::string& t) { return t.empty() ? nlohmann::ordered_json() : nlohmann::ordered_json(t); }

// A rate as the base gives it, a float, to two decimals.
double Taux(double t) { return std::round(t * 100) / 100; }

std::string ProduitJson(const FicheProduit& f) {
    using J = nlohmann::ordered_json;
    J composition = J::array(), classes = J::array(), voies = J::array();
    for (const auto& c : f.composition) composition.push_back({{"label", c.libelle}, {"quantity", c.quantite}});
    for (const auto& c : f.classes) classes.push_back({{"code", c.code}, {"label", c.libelle}});
    for (const auto& v : f.voies) voies.push_back({{"code", v.code}, {"label", v.libelle}});
    J prix;
    if (f.prixCentimes)
        prix = {{"cents", *f.prixCentimes}, {"currency", f.monnaie}, {"reimbursementRate", Taux(*f.tauxRemboursement)},
                {"vatRate", Taux(*f.tauxTVA)}};
    return Dump({{"code", f.code},
                 {"label", f.libelle},
                 {"cip13", TexteOuNul(f.cip13)},
                 {"cis", TexteOuNul(f.cis)},
                 {"deletedOn", TexteOuNul(f.supprimeLe)},
                 {"laboratory", TexteOuNul(f.laboratoire)},
                 {"status", TexteOuNul(f.statut)},
                 {"prescriptions", f.prescriptions},
                 {"flags", f.drapeaux},
                 {"composition", {{"expressedFor", f.exprimePour}, {"substances", composition}}},
                 {"classes", classes},
                 {"routes", voies},
                 {"price", prix},
                 {"commonNameLine", f.codeLigne.empty() ? J() : J{{"code", f.codeLigne}, {"label", f.libelleLigne}}}});
}

void Produit(const httplib::Request& req, httplib::Response& r) {
    const std::string code = req.matches[1];
    if (!CodeProduitValide(code)) return Repond(r, 400, ErreurJson({"code", MessageCodeProduit}));
    EchecAppel echec;
    const std::optional<FicheProduit> f = LitFiche(code, echec);
    if (f) return Repond(r, 200, ProduitJson(*f));
    if (echec.code == CodeInconnu) return Repond(r, 404, ErreurJson({"code", "no product has this code"}));
    RepondEchec(r, echec);
}

void Recherche(const httplib::Request& req, httplib::Response& r) {
    const auto lue = LitRecherche(req.params);
    if (const auto* e = std::get_if<ErreurRequete>(&lue)) return Repond(r, 400, ErreurJson(*e));
    const PageRecherche& page = std::get<PageRecherche>(lue);
    TableauHote<VdxTroisChaines> lignes(TroisChaines);
    const int32_t n =
        RechercheProduitParPas_Vdx(page.texte.c_str(), lignes.Adresse(), 0, page.apres.c_str(), page.nombre);
    if (n < 0) return RepondEchec(r, {"RechercheProduitParPas_Vdx", n});
    nlohmann::ordered_json produits = nlohmann::ordered_json::array();
    for (VdxTroisChaines& l : lignes.Lignes()) produits.push_back({{"code", Utf8(l.Code)}, {"label", Utf8(l.Libelle)}});
    // A full page may have a next one, after its last label.
    nlohmann::ordered_json suite;
    if (!produits.empty() && static_cast<int32_t>(produits.size()) == page.nombre) suite = produits.back()["label"];
    Repond(r, 200, Dump({{"products", produits}, {"next", suite}}));
}

// The body of a check, or nullopt after answering 400.
std::optional<Ordonnance> OrdonnanceDe(const httplib::Request& req, httplib::Response& r) {
    auto lue = LitVerification(req.body);
    if (const auto* e = std::get_if<ErreurRequete>(&lue)) {
        Repond(r, 400, ErreurJson(*e));
        return std::nullopt;
    }
    return std::get<Ordonnance>(std::move(lue));
}

void Verification(const httplib::Request& req, httplib::Response& r) {
    const std::optional<Ordonnance> o = OrdonnanceDe(req, r);
    if (!o) return;
    Constat constat;
    if (const auto echec = Verifie(*o, constat)) return RepondEchec(r, *echec);
    Repond(r, 200, ConstatJson(constat));
}

void RapportsVerification(const httplib::Request& req, httplib::Response& r) {
    const std::optional<Ordonnance> o = OrdonnanceDe(req, r);
    if (!o) return;
    if (const auto echec = EcritRapports(*o, dossierRapports)) return RepondEchec(r, *echec);
    nlohmann::ordered_json pages;
    for (const Rapport& rapport : Rapports) {
        std::ifstream fichier(dossierRapports + "/" + rapport.fichier, std::ios::binary);
        std::ostringstream octets;
        octets << fichier.rdbuf();
        pages[rapport.nom] = codepage::VersUtf8(octets.str());
    }
    Repond(r, 200, Dump(pages));
}

void Base(const httplib::Request&, httplib::Response& r) {
    FicheHote<VdxVersion> version({TypeChamp::Texte, TypeChamp::Texte});
    if (const int32_t n = Version_Vdx(version.Adresse()); n != 1) return RepondEchec(r, {"Version_Vdx", n});
    nlohmann::ordered_json tables = nlohmann::ordered_json::array();
    for (const Table& t : Catalogue()) {
        const int32_t n = TablePresente_Vdx(t.nom);
        if (n < 0 && n != CodeInconnu) return RepondEchec(r, {"TablePresente_Vdx", n});
        if (n == 1) tables.push_back(t.nom);
    }
    Repond(r, 200, Dump({{"version", Utf8(version->Version)}, {"date", Utf8(version->DateVersion)}, {"tables", tables}}));
}

// The JSON of an answer the routes left without body (404, 413...).
httplib::Server::HandlerResponse ErreurSansCorps(const httplib::Request&, httplib::Response& r) {
    if (!r.body.empty()) return httplib::Server::HandlerResponse::Unhandled;
    const char* message = r.status == 404   ? "no such resource"
                          : r.status == 413 ? "the body is larger than 1 MB"
                          : r.status == 414 ? "the address is too long"
                                            : "bad request";
    Repond(r, r.status, ErreurJson({r.status == 413 ? "body" : "request", message}));
    return httplib::Server::HandlerResponse::Handled;
}

void Prepare(Serveur& s, const Reglages& reglages) {
    s.new_task_queue = [] { return new FileEnLigne; };
    // Not SO_REUSEPORT: a second service on the same port is refused.
    s.set_socket_options([](int prise) {
        int oui = 1;
        setsockopt(prise, SOL_SOCKET, SO_REUSEADDR, &oui, sizeof oui);
    });
    // An answer goes out at once, not held back for the client's acknowledgement.
    s.set_tcp_nodelay(true);
    s.set_read_timeout(reglages.delai, 0);
    s.set_write_timeout(reglages.delai, 0);
    // A connection kept open holds its worker: not for long, nor for ever.
    s.set_keep_alive_timeout(1);
    s.set_keep_alive_max_count(5);
    s.set_payload_max_length(CorpsMax);
    s.set_error_handler(httplib::Server::HandlerWithResponse(ErreurSansCorps));
    s.set_exception_handler([](const httplib::Request&, httplib::Response& r, std::exception_ptr) {
        Repond(r, 500, "{\"error\":\"internal error of the service\"}");
    });
    s.Get(R"(/v1/products/([^/]*))", Produit);
    s.Get("/v1/products", Recherche);
    s.Post("/v1/check", Verification);
    s.Post("/v1/check/report", RapportsVerification);
    s.Get("/v1/base", Base);
    s.Get("/openapi.json", [](const httplib::Request&, httplib::Response& r) { r.set_content(DescriptionOpenApi, TypeJson); });
    s.Get("/", [](const httplib::Request&, httplib::Response& r) { r.set_content(PageVerification, "text/html; charset=utf-8"); });
}

volatile sig_atomic_t arret = 0;
void Arrete(int) { arret = 1; }

// A worker's life: its connection, its return code told to the master on
// `pret` for the first workers, then requests until it is stopped.
[[noreturn]] void Travaille(Serveur& s, const Reglages& reglages, const std::string& dossier, pid_t maitre, int pret) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);  // never outlives the master
    signal(SIGTERM, SIG_DFL);
    signal(SIGINT, SIG_DFL);
    // Stopped before the master's handler was undone, or orphaned already.
    if (arret || getppid() != maitre) _exit(SortieSucces);
    const Connexion connexion(reglages.base);
    if (pret >= 0) {  // the workers that start the service
        [[maybe_unused]] const ssize_t ecrit = write(pret, &connexion.code, sizeof connexion.code);
        close(pret);
    }
    if (connexion.code != 1) _exit(SortieSansBase);
    dossierRapports = dossier + "/" + std::to_string(getpid());
    s.listen_after_bind();
    _exit(SortieSucces);
}

std::optional<Reglages> LitReglages(const ArgumentsCommande& args) {
    Reglages r;
    r.base = args.Base();
    if (r.base.empty() || !args.Autres().empty()) return std::nullopt;
    if (const auto ecoute = args.Valeur("--listen")) {
        const size_t deux = ecoute->rfind(':');
        const auto port = deux == std::string::npos ? std::nullopt : EntierDans(ecoute->substr(deux + 1), 0, 65535);
        if (!port || deux == 0) return std::nullopt;
        r.hote = ecoute->substr(0, deux);
        r.port = *port;
    }
    if (const auto n = args.Valeur("--workers")) {
        const auto t = EntierDans(*n, 1, 64);
        if (!t) return std::nullopt;
        r.travailleurs = *t;
    }
    if (const auto n = args.Valeur("--timeout")) {
        const auto t = EntierDans(*n, 1, 3600);
        if (!t) return std::nullopt;
        r.delai = *t;
    }
    return r;
}

int Serve(const ArgumentsCommande& args) {
    const std::optional<Reglages> reglages = LitReglages(args);
    if (!reglages) return Usage(AideServe);
    Serveur serveur;
    Prepare(serveur, *reglages);
    int port = reglages->port;
    if (port == 0 ? (port = serveur.bind_to_any_port(reglages->hote)) <= 0
                  : !serveur.bind_to_port(reglages->hote, port)) {
        std::cerr << "vdx: cannot listen on " << reglages->hote << ':' << reglages->port << '\n';
        return SortieEchec;
    }
    listen(serveur.Socket(), SOMAXCONN);  // a deeper queue than the server's own
    char modele[] = "/tmp/vdx-serve-XXXXXX";
    if (!mkdtemp(modele)) {
        std::cerr << "vdx: cannot make a directory in /tmp\n";
        return SortieEchec;
    }
    const std::string dossier = modele;
    const auto nettoie = [&] {
        std::error_code ignoree;
        std::filesystem::remove_all(dossier, ignoree);
    };
    int pret[2];
    if (pipe(pret) != 0) {
        nettoie();
        return SortieEchec;
    }

    struct sigaction action {};
    action.sa_handler = Arrete;  // no SA_RESTART: waitpid returns to see it
    sigaction(SIGTERM, &action, nullptr);
    sigaction(SIGINT, &action, nullptr);
    signal(SIGPIPE, SIG_IGN);  // a client gone while answered is no death
    const pid_t maitre = getpid();
    std::set<pid_t> travailleurs;
    int ecritPret = pret[1];
    const auto lance = [&] {
        const pid_t p = fork();
        if (p == 0) {
            close(pret[0]);
            Travaille(serveur, *reglages, dossier, maitre, ecritPret);
        }
        if (p > 0) travailleurs.insert(p);
    };
    for (int i = 0; i < reglages->travailleurs; ++i) lance();
    // Served once every worker is connected; stopped when one can't be.
    close(pret[1]);
    ecritPret = -1;
    int32_t code = 1;
    for (int i = 0; i < reglages->travailleurs && code == 1 && !arret;) {
        const ssize_t lu = read(pret[0], &code, sizeof code);
        if (lu == sizeof code)
            ++i;
        else if (lu != 0 && errno != EINTR)
            code = EchecMagasin;
        else if (lu == 0)
            code = EchecMagasin;  // every worker gone without a word
    }
    close(pret[0]);
    if (code != 1) {
        EchecLibrairie("Connection2_Vdx", code);
        arret = 1;
    } else if (!arret) {
        std::cout << "vdx: serving " << reglages->base << " at http://" << reglages->hote << ':' << port << "/ with "
                  << reglages->travailleurs << " workers" << std::endl;
    }

    int sortie = code == 1 ? SortieSucces : SortieEchec;
    auto fenetre = std::chrono::steady_clock::now();
    int morts = 0;
    while (!arret) {
        int statut = 0;
        const pid_t p = waitpid(-1, &statut, 0);
        if (p < 0) {
            if (errno == EINTR) continue;
            break;
        }
        travailleurs.erase(p);
        std::error_code ignoree;
        std::filesystem::remove_all(dossier + "/" + std::to_string(p), ignoree);
        if (WIFEXITED(statut) && WEXITSTATUS(statut) == SortieSansBase) {
            sortie = SortieEchec;
            break;
        }
        // Workers that die as soon as born are replaced slowly.
        if (std::chrono::steady_clock::now() - fenetre > std::chrono::seconds(1)) {
            fenetre = std::chrono::steady_clock::now();
            morts = 0;
        }
        if (++morts > 10 * reglages->travailleurs) std::this_thread::sleep_for(std::chrono::milliseconds(100));
        if (!arret) lance();
    }
    for (const pid_t p : travailleurs) kill(p, SIGTERM);
    for (const pid_t p : travailleurs) waitpid(p, nullptr, 0);
    nettoie();
    return sortie;
}

}  // namespace

const Commande CommandeServe{
    "serve", AideServe, {{"--base", true}, {"--listen", true}, {"--workers", true}, {"--timeout", true}}, Serve};

}  // namespace vdx
