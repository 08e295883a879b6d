#include "engine/lang/parser.h"

#include <algorithm>
#include <utility>

#include "common/errorejecucion.h"

namespace lang {
namespace {

// Deeper trees than any bookkeeper writes would exhaust the stack, here or in the file's engine.
constexpr int kMaxHeight = 200;
// The file's engine joins no more than 64.
constexpr int kMaxSources = 60;

NodePtr node(Node::Kind kind, Op op, std::vector<NodePtr> children) {
  auto made = std::make_unique<Node>();
  made->kind = kind;
  made->op = op;
  for (const NodePtr& child : children) made->height = std::max(made->height, child->height + 1);
  if (made->height > kMaxHeight) {
    throw ErrorEjecucion(err::kErrorDeSintaxis, QStringLiteral("expresión demasiado larga"));
  }
  made->children = std::move(children);
  return made;
}

template <typename... Children>
NodePtr node(Node::Kind kind, Op op, Children... children) {
  std::vector<NodePtr> list;
  (list.push_back(std::move(children)), ...);
  return node(kind, op, std::move(list));
}

class Parser {
 public:
  Parser(const std::vector<Token>& tokens, int ano) : tokens_(tokens), ano_(ano) {}

  SelectNode statement();
  NodePtr criterion() {
    NodePtr condition = expression();
    end();
    return condition;
  }

 private:
  // Counts how deep the reading stands inside itself.
  class Depth {
   public:
    explicit Depth(Parser& parser) : parser_(parser) {
      if (++parser_.depth_ > kMaxHeight) parser_.fail();
    }
    ~Depth() { --parser_.depth_; }
    Depth(const Depth&) = delete;
    Depth& operator=(const Depth&) = delete;

   private:
    Parser& parser_;
  };

  const Token& now() const { return tokens_[at_]; }
  const Token& ahead() const { return tokens_[std::min(at_ + 1, tokens_.size() - 1)]; }
  bool takeWord(Word word) {
    if (now().word != word) return false;
    ++at_;
    return true;
  }
  bool takeSymbol(QStringView symbol) {
    if (!now().isSymbol(symbol)) return false;
    ++at_;
    return true;
  }
  void needWord(Word word) {
    if (!takeWord(word)) fail();
  }
  void needSymbol(QStringView symbol) {
    if (!takeSymbol(symbol)) fail();
  }
  QString needName() {
    if (now().kind != TokenKind::Name || now().word != Word::None) fail();
    return tokens_[at_++].text.toString();
  }
  void end() {
    takeSymbol(u";");
    if (now().kind != TokenKind::End) fail();
  }
  [[noreturn]] void fail() const {
    throw ErrorEjecucion(err::kErrorDeSintaxis, now().kind == TokenKind::End
                                                    ? QStringLiteral("falta el final")
                                                    : now().text.toString());
  }

  SelectItem item();
  std::unique_ptr<FromNode> fromList();
  std::unique_ptr<FromNode> joined();
  std::unique_ptr<FromNode> fromItem();
  bool takeJoin(FromNode::Kind& kind);

  NodePtr expression();
  NodePtr conjunction();
  NodePtr negation();
  NodePtr comparison();
  NodePtr concatenation();
  NodePtr sum();
  NodePtr product();
  NodePtr signedTerm();
  NodePtr term();
  NodePtr nameOrCall();
  NodePtr call();
  std::vector<NodePtr> list();

  const std::vector<Token>& tokens_;
  int ano_;
  size_t at_ = 0;
  int depth_ = 0;
  int sources_ = 0;
};

SelectNode Parser::statement() {
  SelectNode select;
  needWord(Word::Select);
  if (takeWord(Word::Distinct)) {
    select.distinct = true;
  } else {
    takeWord(Word::All);
  }
  do {
    select.items.push_back(item());
  } while (takeSymbol(u","));
  needWord(Word::From);
  select.from = fromList();
  if (takeWord(Word::Where)) select.where = expression();
  if (takeWord(Word::Group)) {
    needWord(Word::By);
    select.groupBy = list();
  }
  if (takeWord(Word::Having)) select.having = expression();
  if (takeWord(Word::Order)) {
    needWord(Word::By);
    do {
      OrderItem order;
      order.expression = expression();
      order.descending = takeWord(Word::Desc);
      if (!order.descending) takeWord(Word::Asc);
      select.orderBy.push_back(std::move(order));
    } while (takeSymbol(u","));
  }
  end();
  return select;
}

SelectItem Parser::item() {
  SelectItem item;
  if (takeSymbol(u"*")) {
    item.expression = node(Node::Kind::All, Op::None);
    return item;
  }
  if (now().kind == TokenKind::Name && ahead().isSymbol(u".") && at_ + 2 < tokens_.size() &&
      tokens_[at_ + 2].isSymbol(u"*")) {
    item.expression = node(Node::Kind::All, Op::None);
    item.expression->parts << needName();
    at_ += 2;
    return item;
  }
  item.expression = expression();
  if (takeWord(Word::As)) item.alias = needName();
  return item;
}

std::unique_ptr<FromNode> Parser::fromList() {
  auto all = joined();
  while (takeSymbol(u",")) {
    auto pair = std::make_unique<FromNode>();
    pair->kind = FromNode::Kind::Cross;
    pair->left = std::move(all);
    pair->right = joined();
    all = std::move(pair);
  }
  return all;
}

bool Parser::takeJoin(FromNode::Kind& kind) {
  switch (now().word) {
    case Word::Inner:
      kind = FromNode::Kind::Inner;
      break;
    case Word::Left:
      kind = FromNode::Kind::Left;
      break;
    case Word::Right:
      kind = FromNode::Kind::Right;
      break;
    default:
      return false;
  }
  ++at_;
  if (kind != FromNode::Kind::Inner) takeWord(Word::Outer);
  needWord(Word::Join);
  return true;
}

std::unique_ptr<FromNode> Parser::joined() {
  auto all = fromItem();
  for (FromNode::Kind kind{}; takeJoin(kind);) {
    auto pair = std::make_unique<FromNode>();
    pair->kind = kind;
    pair->left = std::move(all);
    pair->right = fromItem();
    needWord(Word::On);
    pair->on = expression();
    all = std::move(pair);
  }
  return all;
}

std::unique_ptr<FromNode> Parser::fromItem() {
  const Depth depth(*this);
  if (takeSymbol(u"(")) {
    auto inner = joined();
    needSymbol(u")");
    return inner;
  }
  if (++sources_ > kMaxSources) fail();
  auto source = std::make_unique<FromNode>();
  source->name = needName();
  if (takeWord(Word::As) || (now().kind == TokenKind::Name && now().word == Word::None)) {
    source->alias = needName();
  }
  return source;
}

NodePtr Parser::expression() {
  NodePtr left = conjunction();
  while (takeWord(Word::Or)) {
    left = node(Node::Kind::Binary, Op::Or, std::move(left), conjunction());
  }
  return left;
}

NodePtr Parser::conjunction() {
  NodePtr left = negation();
  while (takeWord(Word::And)) {
    left = node(Node::Kind::Binary, Op::And, std::move(left), negation());
  }
  return left;
}

NodePtr Parser::negation() {
  const Depth depth(*this);
  if (takeWord(Word::Not)) return node(Node::Kind::Not, Op::None, negation());
  return comparison();
}

Op comparisonOf(const Token& token) {
  static constexpr std::pair<QStringView, Op> kOps[] = {
      {u"=", Op::Equal},   {u"<>", Op::NotEqual},  {u"<", Op::Less},
      {u">", Op::Greater}, {u"<=", Op::LessEqual}, {u">=", Op::GreaterEqual}};
  for (const auto& [symbol, op] : kOps) {
    if (token.isSymbol(symbol)) return op;
  }
  return Op::None;
}

NodePtr Parser::comparison() {
  NodePtr left = concatenation();
  for (;;) {
    if (const Op op = comparisonOf(now()); op != Op::None) {
      ++at_;
      left = node(Node::Kind::Binary, op, std::move(left), concatenation());
      continue;
    }
    if (takeWord(Word::Is)) {
      const bool negated = takeWord(Word::Not);
      needWord(Word::Null);
      left = node(Node::Kind::IsNull, Op::None, std::move(left));
      if (negated) left = node(Node::Kind::Not, Op::None, std::move(left));
      continue;
    }
    const bool negated = now().word == Word::Not;
    const Word word = negated ? ahead().word : now().word;
    if (word != Word::Like && word != Word::In && word != Word::Between) return left;
    at_ += negated ? 2 : 1;
    if (word == Word::Like) {
      left = node(Node::Kind::Like, Op::None, std::move(left), concatenation());
    } else if (word == Word::In) {
      needSymbol(u"(");
      std::vector<NodePtr> children = list();
      needSymbol(u")");
      children.insert(children.begin(), std::move(left));
      left = node(Node::Kind::In, Op::None, std::move(children));
    } else {
      NodePtr low = concatenation();
      needWord(Word::And);
      left = node(Node::Kind::Between, Op::None, std::move(left), std::move(low), concatenation());
    }
    if (negated) left = node(Node::Kind::Not, Op::None, std::move(left));
  }
}

NodePtr Parser::concatenation() {
  NodePtr left = sum();
  while (takeSymbol(u"&")) left = node(Node::Kind::Binary, Op::Join, std::move(left), sum());
  return left;
}

NodePtr Parser::sum() {
  NodePtr left = product();
  for (;;) {
    Op op = Op::None;
    if (takeSymbol(u"+")) {
      op = Op::Add;
    } else if (takeSymbol(u"-")) {
      op = Op::Subtract;
    } else {
      return left;
    }
    left = node(Node::Kind::Binary, op, std::move(left), product());
  }
}

NodePtr Parser::product() {
  NodePtr left = signedTerm();
  for (;;) {
    Op op = Op::None;
    if (takeSymbol(u"*")) {
      op = Op::Multiply;
    } else if (takeSymbol(u"/")) {
      op = Op::Divide;
    } else {
      return left;
    }
    left = node(Node::Kind::Binary, op, std::move(left), signedTerm());
  }
}

NodePtr Parser::signedTerm() {
  const Depth depth(*this);
  if (takeSymbol(u"-")) return node(Node::Kind::Negate, Op::None, signedTerm());
  if (takeSymbol(u"+")) return signedTerm();
  return term();
}

NodePtr Parser::term() {
  const Token& token = now();
  if (token.isLiteral()) {
    ++at_;
    NodePtr literal = node(Node::Kind::Literal, Op::None);
    literal->literal = literalOf(token, ano_);
    literal->parameter = token.parameter;
    return literal;
  }
  if (takeSymbol(u"(")) {
    const Depth depth(*this);
    NodePtr inner = expression();
    needSymbol(u")");
    return inner;
  }
  if (takeWord(Word::Null)) return node(Node::Kind::Null, Op::None);
  if (takeWord(Word::True)) return node(Node::Kind::True, Op::None);
  if (takeWord(Word::False)) return node(Node::Kind::False, Op::None);
  return nameOrCall();
}

NodePtr Parser::nameOrCall() {
  if (now().kind != TokenKind::Name) fail();
  if (ahead().isSymbol(u"(")) {
    const Word word = now().word;
    if (word == Word::None || word == Word::Left || word == Word::Right) return call();
  }
  NodePtr name = node(Node::Kind::Name, Op::None);
  name->parts << needName();
  while (takeSymbol(u".")) {
    if (name->parts.size() == 3) fail();
    name->parts << needName();
  }
  return name;
}

NodePtr Parser::call() {
  const QString function = now().text.toString();
  at_ += 2;
  std::vector<NodePtr> arguments;
  if (now().isSymbol(u"*") && ahead().isSymbol(u")")) {
    ++at_;
    arguments.push_back(node(Node::Kind::All, Op::None));
  } else if (!now().isSymbol(u")")) {
    arguments = list();
  }
  needSymbol(u")");
  NodePtr made = node(Node::Kind::Call, Op::None, std::move(arguments));
  made->parts << function;
  return made;
}

std::vector<NodePtr> Parser::list() {
  std::vector<NodePtr> all;
  do {
    all.push_back(expression());
  } while (takeSymbol(u","));
  return all;
}

}  // namespace

SelectNode parseStatement(const std::vector<Token>& tokens, int ano) {
  return Parser(tokens, ano).statement();
}

NodePtr parseCriterion(const std::vector<Token>& tokens, int ano) {
  return Parser(tokens, ano).criterion();
}

}  // namespace lang
