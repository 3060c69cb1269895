// The basic data of a new person as a clerk types them, from field to field.
#pragma once

#include <string>
#include <vector>

namespace dossierkit::tests {

// Codes by themselves or by their shorthand. At the third, "hz", the picker asks: it is 汉族 and 回族.
inline const std::vector<std::string> kBasicDataAsTyped = {"钱三多",
                                                           "1",
                                                           "hz",
                                                           "320481",
                                                           "19791005",
                                                           "qz",
                                                           "bsyjsby",
                                                           "gxbsxw",
                                                           "江南大学",
                                                           "200407",
                                                           "食品工程",
                                                           "酿造",
                                                           "200408",
                                                           "研究所",
                                                           "yz",
                                                           "路1号",
                                                           "214000",
                                                           "0510",
                                                           "13900000000",
                                                           "q@x.cn",
                                                           "gjgcs",
                                                           "nx",
                                                           "kxyjjg",
                                                           "sydw",
                                                           "s",
                                                           "2010",
                                                           "2011",
                                                           "2012",
                                                           "320200197910050011"};

}  // namespace dossierkit::tests
